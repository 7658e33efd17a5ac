// The template lists as the host sees them. Built into libphonetemplate.so, which module and host share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "framework/servlet_base.h"

// What a list or a loop holds: a row of things in the memory of an arena, which is not given back one by one.
template <class T>
class ArenaArray {
 public:
  const T* begin() const { return data_; }
  const T* end() const { return data_ + size_; }
  auto rbegin() const { return std::make_reverse_iterator(end()); }
  auto rend() const { return std::make_reverse_iterator(begin()); }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const T& operator[](std::size_t index) const { return data_[index]; }

 private:
  friend struct TemplateMemory;
  T* data_ = nullptr;
  std::uint32_t size_ = 0, capacity_ = 0;
};

// One entry of a list: a text variable or a loop.
class TemplateEntry {
 public:
  // Each text ends in a NUL.
  TemplateEntry(std::string_view name, std::string_view value)
      : name_(name.data()), value_(value.data()), nameLength_(length(name)), valueLength_(length(value)) {}
  TemplateEntry(std::string_view name, const TMPL_loop* loop)
      : name_(name.data()), loop_(loop), nameLength_(length(name)), valueLength_(kLoop) {}

  std::string_view name() const { return {name_, nameLength_}; }
  bool isLoop() const { return valueLength_ == kLoop; }
  // Empty for a loop.
  std::string_view value() const { return isLoop() ? std::string_view() : std::string_view(value_, valueLength_); }
  // Null for a text, and for a loop without rows.
  const TMPL_loop* loop() const { return isLoop() ? loop_ : nullptr; }

 private:
  static constexpr std::uint32_t kLoop = 0xffffffff;
  static std::uint32_t length(std::string_view text) { return static_cast<std::uint32_t>(text.size()); }

  const char* name_;
  union {
    const char* value_;
    const TMPL_loop* loop_;
  };
  std::uint32_t nameLength_, valueLength_;
};

struct TMPL_varlist {
  ArenaArray<TemplateEntry> entries;  // in the order they were added, repeated names included
};

struct TMPL_loop {
  ArenaArray<const TMPL_varlist*> rows;
};

// The memory of the lists that this thread builds: everything added while an arena lives is freed with it. Arenas nest.
class TemplateArena {
 public:
  TemplateArena();
  ~TemplateArena();
  TemplateArena(const TemplateArena&) = delete;
  TemplateArena& operator=(const TemplateArena&) = delete;

 private:
  friend struct TemplateMemory;

  // What was allocated before it lies in the chunks behind it.
  struct Chunk {
    Chunk* previous;
  };
  // Names that were copied lately, by where they came from: few names make up long loops.
  struct KnownName {
    const char* source = nullptr;
    std::string_view copy;
  };

  void* allocate(std::size_t size, std::size_t alignment);
  // True when the block, the last one that was allocated, could grow in place.
  bool extend(const void* block, std::size_t size, std::size_t newSize);

  alignas(std::max_align_t) std::byte first_[16 * 1024];
  std::byte* free_ = first_;
  std::byte* end_ = first_ + sizeof first_;
  Chunk* chunks_ = nullptr;
  std::size_t nextChunk_ = 64 * 1024;
  KnownName names_[16];
  TemplateArena* outer_;
};
