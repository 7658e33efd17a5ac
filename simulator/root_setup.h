// The folders of the phone's tree.
#pragma once

#include <filesystem>

namespace simulator {

// Makes "/config" anew from the factory defaults, and from the phone's own factory configuration over them when
// `custom` says so and it exists. An end of this process at any moment leaves the old or the new one whole. False when
// that failed: the old one stays.
bool resetConfig(const std::filesystem::path& root, bool custom);

}  // namespace simulator
