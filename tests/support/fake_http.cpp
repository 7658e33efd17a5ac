#include "tests/support/fake_http.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

Fields fieldsOf(const std::string& text) {
  Fields fields;
  std::istringstream stream(text);
  for (std::string field; std::getline(stream, field, '&');) {
    const std::size_t equals = field.find('=');
    if (equals != std::string::npos) fields.emplace(field.substr(0, equals), field.substr(equals + 1));
  }
  return fields;
}

void FakeSession::setAttribute(const char* name, char* value) {
  attributes[name] = value;
  std::free(value);
}

const char** FakeRequest::getParameterValues(const char* name) {
  values_.clear();
  const auto [first, last] = fields.equal_range(name);
  for (auto field = first; field != last; ++field) values_.push_back(field->second.c_str());
  if (values_.empty()) return nullptr;
  values_.push_back(nullptr);
  return values_.data();
}

int FakeRequest::read(char* buffer, int length) {
  const std::size_t count =
      std::min(static_cast<std::size_t>(std::clamp(length, 0, pieceSize)), body.size() - bodyRead_);
  std::copy_n(body.begin() + static_cast<std::ptrdiff_t>(bodyRead_), count, buffer);
  bodyRead_ += count;
  return static_cast<int>(count);
}

void RecordingResponse::print(const char* format, ...) {
  char text[4096];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  body += text;
}

void RecordingResponse::write(const void* data, int size, int count) {
  body.append(static_cast<const char*>(data), static_cast<std::size_t>(size) * static_cast<std::size_t>(count));
}

namespace {
std::string valueIn(const RecordingResponse::Row& row, const std::string& name) {
  const char* value = textIn(row, name);
  return value ? value : "(absent)";
}

RecordingResponse::Row rowOf(const TMPL_varlist& list) {
  RecordingResponse::Row row;
  for (const TemplateEntry& entry : list.entries) row[std::string(entry.name())] = entry.value();
  return row;
}
}  // namespace

void RecordingResponse::renderTemplate(const char* path, TMPL_varlist* list) {
  templates.emplace_back(path);
  if (!list) return;
  for (const TemplateEntry& entry : list->entries) {
    const std::string name(entry.name());
    names.push_back(name);
    if (!entry.isLoop()) {
      variables[name] = entry.value();
      continue;
    }
    std::vector<Row>& rows = loops[name];
    if (!entry.loop()) continue;
    for (const TMPL_varlist* row : entry.loop()->rows) rows.push_back(rowOf(*row));
  }
}

std::string RecordingResponse::variable(const std::string& variableNames) const {
  return joinedValues(variableNames, [this](const std::string& name) { return valueIn(variables, name); });
}

std::string RecordingResponse::column(const std::string& loop, const std::string& name) const {
  const auto found = loops.find(loop);
  if (found == loops.end()) return "(absent)";
  std::string joined;
  for (const Row& row : found->second) joined += (&row == &found->second.front() ? "" : "|") + valueIn(row, name);
  return joined;
}
