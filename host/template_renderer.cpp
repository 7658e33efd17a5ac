#include "host/template_renderer.h"

#include <ctemplate/template.h>
#include <ctemplate/template_emitter.h>

#include <iostream>

#include "host/log.h"
#include "host/phone_file.h"
#include "host/template_scope.h"
#include "host/template_source.h"

namespace host {
namespace {
using Clock = std::chrono::steady_clock;
using Parsed = std::unique_ptr<ctemplate::Template>;

constexpr auto kCheckInterval = std::chrono::seconds(1);

class BodyEmitter final : public ctemplate::ExpandEmitter {
 public:
  explicit BodyEmitter(SpoolBuffer& out) : out_(out) {}
  void Emit(char c) override { out_.append({&c, 1}); }
  void Emit(const std::string& text) override { out_.append(text); }
  void Emit(const char* text) override { out_.append(text); }
  void Emit(const char* text, std::size_t length) override { out_.append({text, length}); }

 private:
  SpoolBuffer& out_;
};

Parsed parseText(const std::string& text) {
  Parsed parsed(ctemplate::Template::StringToTemplate(text.data(), text.size(), ctemplate::STRIP_BLANK_LINES));
  if (parsed && parsed->state() != ctemplate::TS_READY) parsed.reset();
  return parsed;
}

// The library reports on std::cerr, which it would fill with the attempts that look for a fault.
class QuietLibrary {
 public:
  QuietLibrary() { std::cerr.setstate(std::ios::badbit); }
  ~QuietLibrary() { std::cerr.clear(); }
};

void logFault(const TemplateFault& fault) {
  logLine({"template ", fault.file, ":", std::to_string(fault.line), ": ", fault.text});
}

// What every template gets beside the page's own list, which goes before it.
const TMPL_varlist& hostList(const PageContext& context) {
  return *TMPL_add_var(nullptr, "Language", context.language.c_str(), "PhoneType", context.phoneType.c_str(), "Page",
                       context.page.c_str(), "User", context.user().c_str(), nullptr);
}
}  // namespace

struct TemplateRenderer::Entry {
  TemplateSource source;
  Parsed parsed;
  Clock::time_point checked;
};

TemplateRenderer::TemplateRenderer(std::filesystem::path root) : root_(std::move(root)) {}
TemplateRenderer::~TemplateRenderer() = default;

bool TemplateRenderer::parse(const std::string& file, Entry& entry) {
  TemplateFault fault;
  entry.parsed.reset();
  if (TemplateSource::load(file, entry.source, fault)) {
    entry.parsed = parseText(entry.source.text());
    if (entry.parsed) return true;
    const QuietLibrary quiet;
    fault = entry.source.locate([](const std::string& text) { return parseText(text) != nullptr; });
  }
  logFault(fault);
  return false;
}

TemplateRenderer::Entry* TemplateRenderer::current(const std::string& file) {
  std::unique_ptr<Entry>& entry = entries_[file];
  const auto now = Clock::now();
  if (entry && now - entry->checked < kCheckInterval) return entry.get();
  if (!entry || entry->source.changed()) {
    entry = std::make_unique<Entry>();
    if (!parse(file, *entry)) {
      entries_.erase(file);
      return nullptr;
    }
  }
  entry->checked = now;
  return entry.get();
}

bool TemplateRenderer::render(std::string_view path, const TMPL_varlist* list, const PageContext& context,
                              SpoolBuffer& out) {
  const std::string file = phoneFile(root_, path);
  if (file.empty()) {
    logLine({"template ", path, " is no path of the phone"});
    return false;
  }
  const Entry* entry = current(file);
  if (!entry) return false;
  const TemplateArena arena;
  const TMPL_varlist nothing;
  const TemplateScope outer(hostList(context), nullptr);
  const TemplateScope scope(list ? *list : nothing, &outer);
  BodyEmitter emitter(out);
  return entry->parsed->Expand(&emitter, &scope) && !out.failed();
}

}  // namespace host
