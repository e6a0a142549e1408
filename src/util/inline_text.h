#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace celldesk {

/// A UTF-16 text that keeps up to `kInline` characters in itself and a longer one on the heap, for records of
/// which there are many: a text of the usual length costs no allocation. It has less than 2^32 characters.
/// std::bad_alloc where a longer text finds no room; the text is unchanged then.
template <std::size_t kInline>
class InlineText {
 public:
  static_assert((sizeof(std::uint32_t) + kInline * sizeof(char16_t)) % sizeof(char16_t*) == 0,
                "another number would waste room");

  InlineText() noexcept {}  // NOLINT(modernize-use-equals-default): the characters have no value yet
  // NOLINTBEGIN(google-explicit-constructor)
  InlineText(std::u16string_view text) : InlineText() { Assign(text); }
  InlineText(const char16_t* text) : InlineText(std::u16string_view(text)) {}
  InlineText(const std::u16string& text) : InlineText(std::u16string_view(text)) {}
  // NOLINTEND(google-explicit-constructor)
  InlineText(const InlineText& other) : InlineText(other.view()) {}
  InlineText(InlineText&& other) noexcept { Take(other); }
  ~InlineText() = default;

  InlineText& operator=(const InlineText& other) {
    if (this != &other) Assign(other.view());
    return *this;
  }
  InlineText& operator=(InlineText&& other) noexcept {
    if (this != &other) Take(other);
    return *this;
  }

  operator std::u16string_view() const { return view(); }  // NOLINT(google-explicit-constructor)
  std::u16string_view view() const { return {heap_ ? heap_.get() : inline_.data(), size_}; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  void clear() {
    heap_.reset();
    size_ = 0;
  }

  /// Becomes what `write` puts into room for `most` characters; it returns how many it made.
  template <typename Write>
  void Overwrite(std::size_t most, Write write) {
    if (most <= kInline) {
      heap_.reset();
      size_ = static_cast<std::uint32_t>(write(inline_.data()));
      return;
    }
    std::unique_ptr<char16_t[]> room(new char16_t[most]);
    const std::size_t size = write(room.get());
    if (size <= kInline) return Assign({room.get(), size});
    heap_ = std::move(room);
    size_ = static_cast<std::uint32_t>(size);
  }

  template <std::convertible_to<std::u16string_view> Text>
  friend bool operator==(const InlineText& left, const Text& right) {
    return left.view() == std::u16string_view(right);
  }

 private:
  using Traits = std::u16string_view::traits_type;

  // `text` may be a piece of this one.
  void Assign(std::u16string_view text) {
    if (text.size() > kInline) {
      std::unique_ptr<char16_t[]> room(new char16_t[text.size()]);
      Traits::copy(room.get(), text.data(), text.size());
      heap_ = std::move(room);
    } else {
      Traits::move(inline_.data(), text.data(), text.size());
      heap_.reset();
    }
    size_ = static_cast<std::uint32_t>(text.size());
  }

  void Take(InlineText& other) noexcept {
    size_ = std::exchange(other.size_, 0);
    heap_ = std::move(other.heap_);
    if (!heap_) Traits::copy(inline_.data(), other.inline_.data(), size_);
  }

  std::uint32_t size_ = 0;
  std::array<char16_t, kInline> inline_;
  std::unique_ptr<char16_t[]> heap_;  // holds the text exactly when it is longer than kInline
};

}  // namespace celldesk
