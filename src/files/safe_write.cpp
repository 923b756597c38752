// SPDX-License-Identifier: MIT
// Temporary files, and the system calls that move them to their place.
#include "files/safe_write.h"

#include "files/system_calls.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view TEMPORARY_PREFIX = ".quillon-";
constexpr int ASIDE_NAMES = 100;
constexpr mode_t PERMISSIONS = 0777;
constexpr mode_t OWNER_ONLY = 0600;
constexpr mode_t DEFAULT_MODE = 0666; // less what the user's mask takes away

/// A temporary file beside its target, removed unless it was renamed into place.
struct TemporaryFile {
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!path.empty())
            until_uninterrupted([this] { return ::unlink(path.c_str()); });
    }

    fs::path path; ///< empty: there is none, or it is in place
    Descriptor descriptor{};
};

fs::path folder_of(const fs::path& path) { return path.has_parent_path() ? path.parent_path() : fs::path("."); }

/// Where a path leads when all symbolic links at its end are followed, the last of which may lead to no file yet;
/// nothing when they never end.
std::optional<fs::path> follow_links(fs::path path) {
    constexpr int LINKS_MAX = 40;
    for (int i = 0; i < LINKS_MAX; ++i) {
        std::error_code is_no_link;
        const fs::path target = fs::read_symlink(path, is_no_link);
        if (is_no_link)
            return path;
        path = path.parent_path() / target;
    }
    return std::nullopt;
}

int open_new(const fs::path& path, mode_t mode) {
    return until_uninterrupted([&] { return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
}

bool open_temporary(TemporaryFile& file, const fs::path& folder, mode_t mode) {
    constexpr int TRIES = 100; // names that other copies may have taken
    remove_leftovers(folder.string());
    for (int i = 0; i < TRIES; ++i) {
        const fs::path path =
            folder / (std::string(TEMPORARY_PREFIX) + std::to_string(::getpid()) + "-" + std::to_string(i));
        file.descriptor.number = open_new(path, mode);
        if (file.descriptor.number >= 0) {
            file.path = path;
            return true;
        }
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = until_uninterrupted([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Writes the file to the disk and closes it. Only `close` tells of some faults of a file on a network; interrupted, it
/// has closed the file all the same.
bool write_and_close(TemporaryFile& file, std::string_view bytes) {
    const int descriptor = file.descriptor.number;
    if (!write_all(descriptor, bytes))
        return false;
    if (until_uninterrupted([&] { return ::fsync(descriptor); }) != 0)
        return false;
    file.descriptor.number = -1;
    return ::close(descriptor) == 0 || errno == EINTR;
}

/// Gives a file the permissions of the old one, and its owner and group as far as the system lets. Another group gets
/// nothing of what the old one had.
bool take_over_rights(int descriptor, const struct stat& old) {
    struct stat now {};
    if (until_uninterrupted([&] { return ::fstat(descriptor, &now); }) != 0)
        return false;
    mode_t mode = old.st_mode & PERMISSIONS;
    const bool same_group = now.st_gid == old.st_gid || ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
    if (!same_group)
        mode &= ~static_cast<mode_t>(S_IRWXG);
    const bool same_owner = now.st_uid == old.st_uid; // else only an administrator can give the file back to its owner
    [[maybe_unused]] const int given = same_owner ? 0 : ::fchown(descriptor, old.st_uid, static_cast<gid_t>(-1));
    return (now.st_mode & PERMISSIONS) == mode || until_uninterrupted([&] { return ::fchmod(descriptor, mode); }) == 0;
}

/// Lets the folder's new entry reach the disk. The file is in its place already: a fault here changes nothing for the
/// running system, so none is told.
void flush_folder(const fs::path& folder) {
    const Descriptor descriptor(
        until_uninterrupted([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (descriptor.number >= 0)
        until_uninterrupted([&] { return ::fsync(descriptor.number); });
}

bool rename_file(const fs::path& from, const fs::path& to) {
    return until_uninterrupted([&] { return ::rename(from.c_str(), to.c_str()); }) == 0;
}

/// Puts a file under a name that is free: by a second link, or, where the file system has none, by reserving the name
/// and renaming. The file keeps its old name only in the first case.
NewFile place(const fs::path& file, const fs::path& name) {
    if (until_uninterrupted([&] { return ::link(file.c_str(), name.c_str()); }) == 0)
        return NewFile::WRITTEN;
    if (errno == EEXIST)
        return NewFile::NO_FREE_NAME;
    const int reserved = open_new(name, OWNER_ONLY);
    if (reserved < 0)
        return errno == EEXIST ? NewFile::NO_FREE_NAME : NewFile::FAILED;
    ::close(reserved);
    if (rename_file(file, name))
        return NewFile::WRITTEN;
    until_uninterrupted([&] { return ::unlink(name.c_str()); });
    return NewFile::FAILED;
}

/// Gives a file a second name, or only that; nothing when that cannot be.
std::optional<std::string> place_aside(const fs::path& file) {
    for (int i = 0; i < ASIDE_NAMES; ++i) {
        const std::string name = file.string() + ".bad" + (i > 0 ? std::to_string(i) : "");
        const NewFile outcome = place(file, name);
        if (outcome == NewFile::WRITTEN)
            return name;
        if (outcome == NewFile::FAILED)
            break;
    }
    return std::nullopt;
}

enum class OldFile { REPLACED, KEPT_ASIDE };

/// Whether there is a file in the way, and one that may be replaced; nothing when it must not be touched.
std::optional<bool> find_old(const fs::path& path, struct stat& old) {
    const bool is_there = until_uninterrupted([&] { return ::stat(path.c_str(), &old); }) == 0;
    if (!is_there)
        return errno == ENOENT ? std::optional(false) : std::nullopt;
    const bool may_be_written = until_uninterrupted([&] { return ::access(path.c_str(), W_OK); }) == 0;
    return S_ISREG(old.st_mode) && may_be_written ? std::optional(true) : std::nullopt;
}

bool write_file(const std::string& path, std::string_view bytes, OldFile what_of_the_old, std::string* kept) {
    const std::optional<fs::path> target = follow_links(path);
    struct stat old {};
    const std::optional<bool> is_there = target ? find_old(*target, old) : std::nullopt;
    if (!is_there)
        return false;
    TemporaryFile file;
    if (!open_temporary(file, folder_of(*target), *is_there ? OWNER_ONLY : DEFAULT_MODE))
        return false;
    if (*is_there && !take_over_rights(file.descriptor.number, old))
        return false;
    if (!write_and_close(file, bytes))
        return false;
    if (*is_there && what_of_the_old == OldFile::KEPT_ASIDE) {
        const std::optional<std::string> name = place_aside(*target);
        if (!name)
            return false;
        if (kept != nullptr)
            *kept = *name;
    }
    if (!rename_file(file.path, *target))
        return false;
    file.path.clear();
    flush_folder(folder_of(*target));
    return true;
}

bool is_taken(const std::string& name) {
    struct stat entry {};
    return until_uninterrupted([&] { return ::lstat(name.c_str(), &entry); }) == 0;
}

/// The process that a temporary file belongs to; nothing for another file.
std::optional<pid_t> owner_of_temporary(std::string_view name) {
    if (!name.starts_with(TEMPORARY_PREFIX))
        return std::nullopt;
    name.remove_prefix(TEMPORARY_PREFIX.size());
    pid_t owner = 0;
    const auto [end, fault] = std::from_chars(name.data(), name.data() + name.size(), owner);
    const bool has_number = fault == std::errc() && end != name.data() + name.size() && *end == '-';
    return has_number && owner > 0 ? std::optional(owner) : std::nullopt;
}

/// Whether nobody writes this temporary file any more. This program itself is not writing when it looks.
bool is_leftover(const fs::path& path) {
    const std::optional<pid_t> owner = owner_of_temporary(path.filename().string());
    if (!owner || (*owner != ::getpid() && (::kill(*owner, 0) == 0 || errno != ESRCH)))
        return false;
    struct stat entry {};
    return ::lstat(path.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) && entry.st_uid == ::geteuid();
}

} // namespace

bool safe_write(const std::string& path, std::string_view bytes) {
    return write_file(path, bytes, OldFile::REPLACED, nullptr);
}

bool safe_write_keeping_old(const std::string& path, std::string_view bytes, std::string* kept) {
    return write_file(path, bytes, OldFile::KEPT_ASIDE, kept);
}

NewFile write_new_file(const std::vector<std::string>& names, std::string_view bytes, std::string* written) {
    TemporaryFile file;
    for (const std::string& name : names) {
        if (is_taken(name))
            continue;
        const fs::path folder = folder_of(name);
        const bool is_ready =
            !file.path.empty() || (open_temporary(file, folder, DEFAULT_MODE) && write_and_close(file, bytes));
        if (!is_ready)
            return NewFile::FAILED;
        const NewFile outcome = place(file.path, name);
        if (outcome == NewFile::WRITTEN) {
            flush_folder(folder);
            if (written != nullptr)
                *written = name;
        }
        if (outcome != NewFile::NO_FREE_NAME)
            return outcome;
    }
    return NewFile::NO_FREE_NAME;
}

void remove_leftovers(const std::string& folder) {
    std::error_code fault;
    std::vector<fs::path> leftovers;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end; entry.increment(fault)) {
        if (is_leftover(entry->path()))
            leftovers.push_back(entry->path());
    }
    for (const fs::path& path : leftovers)
        ::unlink(path.c_str());
}

} // namespace quillon
