// Pictures that users upload, brought to the size in which the phone shows them.
#pragma once

#include <cstdint>

// Scales the picture at the phone's path `source` to width x height pixels at `destination` and removes the source.
// 1: done. 2: its resolution is too large. Anything else (0 when nobody told): it could not be read, holds more than
// `byteLimit` bytes or could not be stored.
int ProcessUserPhoto(const char* source, const char* destination, int width, int height, std::int64_t byteLimit);
