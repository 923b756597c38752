// Neighbours, and the system calls that move them to their place.
#include "shell/safe_write.h"

#include <cerrno>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {
namespace {

namespace fs = std::filesystem;

constexpr mode_t PERMISSIONS = 0777;
constexpr mode_t OWNER_ONLY = 0600;
constexpr mode_t AS_THE_USER_LIKES = 0666; // less what the user's mask takes away

/// A file on its way to its place. What has not arrived at the end is removed.
struct Neighbour {
    Neighbour() = default;
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour() {
        if (descriptor >= 0)
            ::close(descriptor);
        if (!path.empty())
            ::unlink(path.c_str());
    }

    fs::path path; ///< empty: there is none, or it has arrived
    int descriptor = -1;
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

bool open_neighbour(Neighbour& neighbour, const fs::path& folder, mode_t mode) {
    constexpr int TRIES = 100; // names that other copies, or an earlier one that was killed, may have left
    for (int i = 0; i < TRIES; ++i) {
        const fs::path path = folder / (".quillon-" + std::to_string(::getpid()) + "-" + std::to_string(i));
        neighbour.descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (neighbour.descriptor >= 0) {
            neighbour.path = path;
            return true;
        }
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Writes the neighbour to the disk and closes it. Only `close` tells of some faults of a file on a network.
bool fill(Neighbour& neighbour, std::string_view bytes) {
    if (!write_all(neighbour.descriptor, bytes))
        return false;
    while (::fsync(neighbour.descriptor) != 0) {
        if (errno != EINTR)
            return false;
    }
    const int descriptor = neighbour.descriptor;
    neighbour.descriptor = -1;
    return ::close(descriptor) == 0;
}

/// Gives a file the permissions of the old one, and its owner and group as far as the system lets. Another group gets
/// nothing of what the old one had.
bool take_over_rights(int descriptor, const struct stat& old) {
    struct stat now {};
    if (::fstat(descriptor, &now) != 0)
        return false;
    mode_t mode = old.st_mode & PERMISSIONS;
    const bool same_group = now.st_gid == old.st_gid || ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
    if (!same_group)
        mode &= ~static_cast<mode_t>(S_IRWXG);
    const bool same_owner = now.st_uid == old.st_uid; // else only an administrator can give the file back to its owner
    [[maybe_unused]] const int given = same_owner ? 0 : ::fchown(descriptor, old.st_uid, static_cast<gid_t>(-1));
    return (now.st_mode & PERMISSIONS) == mode || ::fchmod(descriptor, mode) == 0;
}

/// Lets the folder's new entry reach the disk. The file is in its place already: a fault here changes nothing for the
/// running system, so none is told.
void flush_folder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

/// Puts a file under a name that is free: by a second link, or, where the file system has none, by reserving the name
/// and renaming. The file keeps its old name only in the first case.
NewFile place(const fs::path& file, const fs::path& name) {
    if (::link(file.c_str(), name.c_str()) == 0)
        return NewFile::WRITTEN;
    if (errno == EEXIST)
        return NewFile::NO_FREE_NAME;
    const int reserved = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, OWNER_ONLY);
    if (reserved < 0)
        return errno == EEXIST ? NewFile::NO_FREE_NAME : NewFile::FAILED;
    ::close(reserved);
    if (::rename(file.c_str(), name.c_str()) == 0)
        return NewFile::WRITTEN;
    ::unlink(name.c_str());
    return NewFile::FAILED;
}

bool keep_aside(const fs::path& file) {
    constexpr int NAMES = 100;
    for (int i = 0; i < NAMES; ++i) {
        const NewFile outcome = place(file, file.string() + ".bad" + (i > 0 ? std::to_string(i) : ""));
        if (outcome != NewFile::NO_FREE_NAME)
            return outcome == NewFile::WRITTEN;
    }
    return false;
}

enum class OldFile { REPLACED, KEPT_ASIDE };

bool write_file(const std::string& path, std::string_view bytes, OldFile what_of_the_old) {
    const std::optional<fs::path> target = follow_links(path);
    if (!target)
        return false;
    struct stat old {};
    const bool is_there = ::stat(target->c_str(), &old) == 0;
    if (!is_there && errno != ENOENT)
        return false;
    if (is_there && (!S_ISREG(old.st_mode) || ::access(target->c_str(), W_OK) != 0))
        return false;
    Neighbour neighbour;
    if (!open_neighbour(neighbour, folder_of(*target), is_there ? OWNER_ONLY : AS_THE_USER_LIKES))
        return false;
    if (is_there && !take_over_rights(neighbour.descriptor, old))
        return false;
    if (!fill(neighbour, bytes))
        return false;
    if (is_there && what_of_the_old == OldFile::KEPT_ASIDE && !keep_aside(*target))
        return false;
    if (::rename(neighbour.path.c_str(), target->c_str()) != 0)
        return false;
    neighbour.path.clear();
    flush_folder(folder_of(*target));
    return true;
}

bool is_taken(const std::string& name) {
    struct stat entry {};
    return ::lstat(name.c_str(), &entry) == 0;
}

} // namespace

bool safe_write(const std::string& path, std::string_view bytes) { return write_file(path, bytes, OldFile::REPLACED); }

bool safe_write_keeping_old(const std::string& path, std::string_view bytes) {
    return write_file(path, bytes, OldFile::KEPT_ASIDE);
}

NewFile write_new_file(const std::vector<std::string>& names, std::string_view bytes, std::string* written) {
    Neighbour neighbour;
    for (const std::string& name : names) {
        if (is_taken(name))
            continue;
        const fs::path folder = folder_of(name);
        if (neighbour.path.empty() && !(open_neighbour(neighbour, folder, AS_THE_USER_LIKES) && fill(neighbour, bytes)))
            return NewFile::FAILED;
        const NewFile outcome = place(neighbour.path, name);
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

} // namespace quillon
