// A phone of its own for each test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "template/template_list.h"
#include "tests/support/fake_http.h"

// A folder that is gone at the end. Files are named by their paths in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder() { std::filesystem::remove_all(path_, ignored_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }
  std::string content(const std::string& file) const;
  void write(const std::string& file, std::string_view content) const;
  // Names of what a folder holds.
  std::vector<std::string> list(const std::string& folder) const;

 private:
  std::filesystem::path path_;
  std::error_code ignored_;
};

using Values = std::map<std::string, std::string>;

// A fresh phone as it is delivered, with its journal empty and its log recorded.
class PhoneTest : public ::testing::Test {
 protected:
  PhoneTest();
  ~PhoneTest() override;

  // Stores values without any message, those of "key=value&key=value" too; "AccountLabel@2" is the key of an account.
  static void setConfig(const std::string& key, const std::string& value);
  static void setConfig(const std::string& values);
  // The stored values of keys that are divided by blanks, joined by "|".
  static std::string config(const std::string& keys);
  // Merges a JSON object into the device's state.
  static void setState(std::string_view json);
  // What the applications received since the last call, one line each: "post app_hostapp 0x10007 39 0", a payload
  // behind it in brackets.
  std::vector<std::string> messages();

  std::filesystem::path file(const std::string& phonePath) const { return root_.path() / ("phone" + phonePath); }
  std::string content(const std::string& phonePath) const { return root_.content("phone" + phonePath); }
  std::vector<std::string> list(const std::string& phonePath) const { return root_.list("phone" + phonePath); }
  void write(const std::string& phonePath, std::string_view text) const { root_.write("phone" + phonePath, text); }
  // All that the phone keeps: the names and the contents of its files.
  std::string everythingStored() const;
  // The log lines so far, "LEVEL text".
  std::vector<std::string> log;

 private:
  TemporaryFolder root_;
  TemplateArena arena_;
  long seen_ = 0;
};

// Runs one request against a handler.
template <class Handler, class Request>
RecordingResponse serve(Handler& handler, Request&& request) {
  RecordingResponse response;
  handler.onRequest(&request, &response);
  return response;
}
