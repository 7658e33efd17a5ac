// Base64 with the standard alphabet and "=" padding.
#pragma once

#include <string>

// Encodes `length` bytes and returns the number of characters; a length below 1 gives an empty text and 0.
int Base64Enc(std::string& output, const void* data, int length);

// Decodes a text whose length is `length`, a multiple of 4 (-1 otherwise), up to its first NUL. Characters outside the
// alphabet count as 0, padding gives no bytes. Returns the number of bytes.
int Base64Dec(std::string& output, const char* text, int length);

// Encodes into a new text that the caller frees with free(); returns its length, 0 (and a null text) without memory.
int base64_encode(const void* data, int length, char** output);

// Decodes up to the first character that is neither in the alphabet nor "="; returns the number of bytes.
int base64_decode(const char* text, std::string& output);

// The value of a character of the alphabet, 0 for any other.
int GetBase64Value(char character);
