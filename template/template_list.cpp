#include "template/template_list.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <iterator>
#include <new>
#include <type_traits>

namespace {
thread_local TemplateArena* currentArena = nullptr;
constexpr std::size_t kLargestChunk = 1024 * 1024;
}  // namespace

TemplateArena::TemplateArena() : outer_(currentArena) {
  currentArena = this;
}

TemplateArena::~TemplateArena() {
  currentArena = outer_;
  while (chunks_ != nullptr) {
    Chunk* chunk = chunks_;
    chunks_ = chunk->previous;
    ::operator delete(chunk);
  }
}

void* TemplateArena::allocate(std::size_t size, std::size_t alignment) {
  const auto misplaced = reinterpret_cast<std::uintptr_t>(free_) % alignment;
  const std::size_t padding = misplaced == 0 ? 0 : alignment - misplaced;
  if (padding + size <= static_cast<std::size_t>(end_ - free_)) {
    std::byte* block = free_ + padding;
    free_ = block + size;
    return block;
  }
  constexpr std::size_t kHead = alignof(std::max_align_t);
  static_assert(sizeof(Chunk) <= kHead);
  const std::size_t wanted = std::max(nextChunk_, size + kHead);
  auto* memory = static_cast<std::byte*>(::operator new(wanted));
  chunks_ = new (memory) Chunk{chunks_};
  nextChunk_ = std::min(nextChunk_ * 2, kLargestChunk);
  free_ = memory + kHead + size;
  end_ = memory + wanted;
  return memory + kHead;
}

bool TemplateArena::extend(const void* block, std::size_t size, std::size_t newSize) {
  if (static_cast<const std::byte*>(block) + size != free_) return false;
  if (newSize - size > static_cast<std::size_t>(end_ - free_)) return false;
  free_ += newSize - size;
  return true;
}

struct TemplateMemory {
  // Lists made outside any arena live as long as the thread.
  static TemplateArena& arena() {
    if (!currentArena) {
      static thread_local TemplateArena threadLong;
      currentArena = &threadLong;
    }
    return *currentArena;
  }

  static std::string_view copy(const char* text) {
    const std::size_t length = text ? std::strlen(text) : 0;
    char* place = static_cast<char*>(arena().allocate(length + 1, 1));
    if (length) std::memcpy(place, text, length);
    place[length] = '\0';
    return {place, length};
  }

  static std::string_view copyName(const char* name) {
    TemplateArena& arena = TemplateMemory::arena();
    TemplateArena::KnownName& known =
        arena.names_[reinterpret_cast<std::uintptr_t>(name) / 4 % std::size(arena.names_)];
    if (known.source != name || known.copy != name) known = {name, copy(name)};
    return known.copy;
  }

  template <class T>
  static T* make() {
    static_assert(std::is_trivially_destructible_v<T>);
    return new (arena().allocate(sizeof(T), alignof(T))) T;
  }

  // What one thing takes in an array.
  template <class T>
  struct Slot {
    T thing;
  };

  // Room for `count` more things.
  template <class T>
  static void reserve(ArenaArray<T>& array, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<T>);
    constexpr std::size_t kSize = sizeof(Slot<T>);
    const std::size_t wanted = array.size_ + count;
    if (wanted <= array.capacity_) return;
    TemplateArena& arena = TemplateMemory::arena();
    if (!arena.extend(array.data_, array.capacity_ * kSize, wanted * kSize)) {
      const std::size_t roomy = array.size_ == 0 ? wanted : std::max<std::size_t>(wanted, array.capacity_ * 2);
      auto* data = static_cast<T*>(arena.allocate(roomy * kSize, alignof(T)));
      if (array.size_ != 0) std::memcpy(static_cast<void*>(data), array.data_, array.size_ * kSize);
      array.data_ = data;
      array.capacity_ = static_cast<std::uint32_t>(roomy);
      return;
    }
    array.capacity_ = static_cast<std::uint32_t>(wanted);
  }

  template <class T>
  static void append(ArenaArray<T>& array, const T& thing) {
    reserve(array, 1);
    new (array.data_ + array.size_++) T(thing);
  }
};

namespace {
void append(TMPL_varlist* list, const char* name, const char* value) {
  const std::string_view text = TemplateMemory::copy(value);
  TemplateMemory::append(list->entries, TemplateEntry(TemplateMemory::copyName(name), text));
}

std::size_t countPairs(va_list rest) {
  std::size_t count = 0;
  for (; va_arg(rest, const char*); ++count) va_arg(rest, const char*);
  return count;
}
}  // namespace

TMPL_varlist* TMPL_add_var(TMPL_varlist* list, const char* name, const char* value, ...) {
  if (!list) list = TemplateMemory::make<TMPL_varlist>();
  if (!name) return list;
  va_list rest, counted;
  va_start(rest, value);
  va_copy(counted, rest);
  TemplateMemory::reserve(list->entries, countPairs(counted) + 1);
  va_end(counted);
  append(list, name, value);
  while (const char* nextName = va_arg(rest, const char*)) append(list, nextName, va_arg(rest, const char*));
  va_end(rest);
  return list;
}

TMPL_loop* TMPL_add_varlist(TMPL_loop* loop, TMPL_varlist* row) {
  if (!loop) loop = TemplateMemory::make<TMPL_loop>();
  if (row) TemplateMemory::append<const TMPL_varlist*>(loop->rows, row);
  return loop;
}

TMPL_varlist* TMPL_add_loop(TMPL_varlist* list, const char* name, TMPL_loop* loop) {
  if (!list) list = TemplateMemory::make<TMPL_varlist>();
  if (name) TemplateMemory::append(list->entries, TemplateEntry(TemplateMemory::copyName(name), loop));
  return list;
}
