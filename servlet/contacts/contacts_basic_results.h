// How changes of the local directory are answered.
#pragma once

#include <cstdint>
#include <string>

#include "framework/servlet_base.h"
#include "platform/local_directory.h"

// The result of a change where the directory is not available.
inline constexpr std::int32_t kNoDirectory = -101;

// A group by its id; false, with empty texts, when there is none.
bool findGroup(int id, NS_DIRECTORY::ContactGroupData& group);

// The result of a change made by `change(directory)`.
template <class Change>
std::int32_t changeDirectory(Change change) {
  NS_DIRECTORY::CContactLocalManager* directory = NS_DIRECTORY::CContactLocalManager::GetInstance();
  return directory ? change(*directory) : kNoDirectory;
}

// True, with the notice as the answer, for a change that failed.
bool isRefused(HttpResponse* response, std::int32_t result);

// The address of a list. Numbers are taken as they came in, null and texts too long for one as none.
std::string listAddress(const char* page, const char* group);
