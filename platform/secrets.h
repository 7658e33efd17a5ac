// What the configuration service does with secrets.
#pragma once

#include <cstddef>

// Empties the values of all secrets in the ini files below the folder `files`, a copy of the configuration's folder
// `config`. 0, or -1 when a file could not be read or replaced.
int configParser_CleanPassword(const char* files, const char* config);

// Turn a password into the text that is stored in its place, and back: at most `size` bytes go to `result`, the final
// NUL included; a text is never longer than the one that it stands for. False, with an empty result, when it does not
// fit or there is no text.
bool pw_data_encrypt(const char* text, char* result, std::size_t size);
bool pw_data_decrypt(const char* text, char* result, std::size_t size);
