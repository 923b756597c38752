// SPDX-License-Identifier: MIT
// Bounded text: at most so many bytes, held in place. Every fixed-size text of the machine is one of these, so nothing
// overruns and nothing allocates; what is longer is cut, here and nowhere else.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillon {

/// A NUL-terminated 8-bit text of at most `Capacity` bytes. Copying costs what the text is long, not what it may hold.
template <std::size_t Capacity>
class BoundedText {
public:
    BoundedText() { bytes_[0] = '\0'; }
    BoundedText(std::string_view text) { assign(text); } // NOLINT(google-explicit-constructor)
    BoundedText(const BoundedText& other) { assign(other.view()); }
    BoundedText& operator=(const BoundedText& other) {
        if (this != &other)
            assign(other.view());
        return *this;
    }
    BoundedText& operator=(std::string_view text) {
        assign(text);
        return *this;
    }
    ~BoundedText() = default;

    [[nodiscard]] static constexpr std::size_t capacity() { return Capacity; }
    /// The minimum is redundant; it keeps GCC's overflow warnings quiet where texts of two sizes meet.
    [[nodiscard]] std::size_t size() const { return std::min<std::size_t>(size_, Capacity); }
    [[nodiscard]] bool empty() const { return size_ == 0; }
    [[nodiscard]] const char* c_str() const { return bytes_; }
    [[nodiscard]] std::string_view view() const { return {bytes_, size()}; }
    operator std::string_view() const { return view(); } // NOLINT(google-explicit-constructor)

    /// The byte at `index`, or NUL at and beyond the end.
    char operator[](std::size_t index) const { return index < size_ ? bytes_[index] : '\0'; }

    void clear() { shorten(0); }

    /// Keeps the first `size` bytes; a text that is not longer stays as it is.
    void shorten(std::size_t size) {
        size_ = static_cast<Size>(std::min<std::size_t>(size, size_));
        bytes_[size_] = '\0';
    }

    /// Takes over the first `Capacity` bytes of `text`, which may be a part of this very text.
    void assign(std::string_view text) {
        size_ = static_cast<Size>(std::min(text.size(), Capacity));
        if (size_ > 0)
            std::memmove(bytes_, text.data(), size_);
        bytes_[size_] = '\0';
    }

    /// Appends as much of `text` as has room.
    void append(std::string_view text) {
        const std::size_t count = std::min(text.size(), Capacity - size_);
        if (count > 0)
            std::memmove(bytes_ + size_, text.data(), count);
        size_ = static_cast<Size>(size_ + count);
        bytes_[size_] = '\0';
    }

    /// Appends one byte if there is room.
    void push_back(char byte) {
        if (size_ == Capacity)
            return;
        bytes_[size_++] = byte;
        bytes_[size_] = '\0';
    }

    /// Replaces the byte at `index`; nothing at and beyond the end.
    void set(std::size_t index, char byte) {
        if (index < size_)
            bytes_[index] = byte;
    }

    /// Puts one byte before `index` (at most the end); a full text loses nothing and stays as it is.
    void insert(std::size_t index, char byte) {
        if (size_ == Capacity || index > size_)
            return;
        std::memmove(bytes_ + index + 1, bytes_ + index, size_ - index + 1U);
        bytes_[index] = byte;
        ++size_;
    }

    /// Removes the byte at `index`; nothing at and beyond the end.
    void erase(std::size_t index) {
        if (index >= size_)
            return;
        std::memmove(bytes_ + index, bytes_ + index + 1, size_ - index);
        --size_;
    }

private:
    using Size = std::uint16_t;
    static_assert(Capacity < UINT16_MAX);

    Size size_ = 0;
    char bytes_[Capacity + 1];
};

/// By content. Deduces from two bounded texts only, so that other comparisons go by `std::string_view`.
template <std::size_t Capacity>
bool operator==(const BoundedText<Capacity>& a, const BoundedText<Capacity>& b) {
    return a.view() == b.view();
}

} // namespace quillon
