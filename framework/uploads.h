// Files that come in with a form. All paths are paths of the phone.
#pragma once

#include <cstdint>
#include <string>

#include "framework/servlet_base.h"

// True when an upload fits: the folder's size with it (or the upload alone when it replaces what is there) stays
// within `maximum` bytes, and `reserve` bytes of the partition stay free. Otherwise `error` says why.
bool CheckUploadFile(HttpRequest* request, const char* partition, const char* folder, std::string* error, bool replace,
                     std::int64_t maximum, std::int64_t reserve);

// True when an upload fits under "/config/" in place of the file or folder at `existing`. Otherwise the notice is the
// answer. False without an answer when an argument is missing.
bool CheckConfigFreeSize(HttpRequest* request, HttpResponse* response, const char* existing, bool isFolder);

// The path of the file uploaded in a field, stored under `pattern` (ending in "XXXXXX"). Empty when there is none, and
// when the field holds a text in place of a file: that must never be taken for a path.
std::string uploadedFile(HttpRequest* request, const char* field, const char* pattern);

// The name that the browser gave the file uploaded in a field, without folders; empty when there is none. To be asked
// for behind uploadedFile().
std::string uploadedFileName(HttpRequest* request, const char* field);

// Moves an upload over the target. False, with the target gone, when the rename fails.
bool RenameUploadFile(const char* upload, const char* target);
