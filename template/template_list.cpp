#include "template/template_list.h"

#include <cstdarg>
#include <cstring>
#include <new>

namespace {
thread_local TemplateArena* currentArena = nullptr;
}

TemplateArena::TemplateArena() : memory_(first_, sizeof first_), outer_(currentArena) {
  currentArena = this;
}

TemplateArena::~TemplateArena() {
  currentArena = outer_;
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
    TemplateArena& arena = TemplateMemory::arena();
    char* place = static_cast<char*>(arena.memory_.allocate(length + 1, 1));
    if (length) std::memcpy(place, text, length);
    place[length] = '\0';
    arena.used_ += length + 1;
    return {place, length};
  }

  // The object and what it grows into are given back with the arena, so no destructor needs to run.
  template <class T>
  static T* make() {
    TemplateArena& arena = TemplateMemory::arena();
    arena.used_ += sizeof(T);
    return new (arena.memory_.allocate(sizeof(T), alignof(T))) T(&arena.memory_);
  }
};

namespace {
void append(TMPL_varlist* list, const char* name, const char* value) {
  list->entries.push_back({TemplateMemory::copy(name), TemplateMemory::copy(value)});
}
}  // namespace

TMPL_varlist* TMPL_add_var(TMPL_varlist* list, const char* name, const char* value, ...) {
  if (!list) list = TemplateMemory::make<TMPL_varlist>();
  if (!name) return list;
  append(list, name, value);
  va_list rest;
  va_start(rest, value);
  while (const char* nextName = va_arg(rest, const char*)) append(list, nextName, va_arg(rest, const char*));
  va_end(rest);
  return list;
}

TMPL_loop* TMPL_add_varlist(TMPL_loop* loop, TMPL_varlist* row) {
  if (!loop) loop = TemplateMemory::make<TMPL_loop>();
  if (row) loop->rows.push_back(row);
  return loop;
}

TMPL_varlist* TMPL_add_loop(TMPL_varlist* list, const char* name, TMPL_loop* loop) {
  if (!list) list = TemplateMemory::make<TMPL_varlist>();
  if (name) list->entries.push_back({TemplateMemory::copy(name), {}, loop, true});
  return list;
}
