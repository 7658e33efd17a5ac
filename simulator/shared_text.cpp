#include "platform/shared_text.h"

#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "simulator/shared_texts.h"

namespace {

struct SharedText {
  std::unique_ptr<char[]> bytes;
  std::size_t capacity = 0;
};

struct SharedTexts {
  std::recursive_mutex mutex;
  std::map<std::string, SharedText, std::less<>> byName;
  std::list<SharedText> retired;
};

SharedTexts& sharedTexts() {
  static SharedTexts* texts = new SharedTexts;  // outlives every user of its pointers
  return *texts;
}

}  // namespace

char* sharedTextGet(const char* name, std::size_t size, std::size_t* capacity) {
  if (name == nullptr) return nullptr;
  SharedTexts& texts = sharedTexts();
  const std::lock_guard lock(texts.mutex);
  auto found = texts.byName.find(name);
  if (found == texts.byName.end()) {
    if (size == 0) return nullptr;
    found = texts.byName.emplace(name, SharedText{std::make_unique<char[]>(size), size}).first;
  }
  if (capacity != nullptr) *capacity = found->second.capacity;
  return found->second.bytes.get();
}

void sharedTextLock() {
  sharedTexts().mutex.lock();
}

void sharedTextUnlock() {
  sharedTexts().mutex.unlock();
}

namespace simulator {

void forgetSharedTexts() {
  SharedTexts& texts = sharedTexts();
  const std::lock_guard lock(texts.mutex);
  for (auto& [name, text] : texts.byName) texts.retired.push_back(std::move(text));
  texts.byName.clear();
}

}  // namespace simulator
