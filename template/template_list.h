// The template lists as the host sees them. Built into libphonetemplate.so, which module and host share.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "framework/servlet_base.h"

// One entry of a list: a text variable, or a loop when `loop` is not null or `isLoop` is set (a loop without rows).
struct TemplateEntry {
  std::string_view name;  // each text ends in a NUL
  std::string_view value;
  const TMPL_loop* loop = nullptr;
  bool isLoop = false;
};

struct TMPL_varlist {
  explicit TMPL_varlist(std::pmr::memory_resource* memory) : entries(memory) {}
  std::pmr::vector<TemplateEntry> entries;  // in the order they were added, repeated names included
};

struct TMPL_loop {
  explicit TMPL_loop(std::pmr::memory_resource* memory) : rows(memory) {}
  std::pmr::vector<const TMPL_varlist*> rows;
};

// The memory of the lists that this thread builds: everything added while an arena lives is freed with it. Arenas nest.
class TemplateArena {
 public:
  TemplateArena();
  ~TemplateArena();
  TemplateArena(const TemplateArena&) = delete;
  TemplateArena& operator=(const TemplateArena&) = delete;

  // The bytes that its lists took so far.
  std::size_t used() const { return used_; }

 private:
  friend struct TemplateMemory;
  alignas(std::max_align_t) std::byte first_[16 * 1024];
  std::pmr::monotonic_buffer_resource memory_;
  std::size_t used_ = 0;
  TemplateArena* outer_;
};
