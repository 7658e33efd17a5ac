// Text editing shared by the pages.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

class ETL_SubClass;

// Cuts the text to what a buffer of `size` bytes holds beside the final NUL.
void cutText(std::string& text, std::size_t size);

// The same without leaving a part of a UTF-8 character at the end.
void cutUtf8(std::string& text, std::size_t size);

// The whole text as a decimal number with an optional "-"; nothing when it is not one or does not fit an int.
std::optional<int> parseInt(std::string_view text);
// The same for a text that may be null.
std::optional<int> parseInt(const char* text);

// True for a text made of ASCII letters, digits, "-" and "_" only, and not empty: what the phone's page names are.
bool isPlainName(std::string_view text);

// Replaces every occurrence of `from`; the result is cut to 511 characters. -1 (text unchanged) when an argument is
// null or empty or `from` does not occur, 0 after replacing.
int ReplaceStr(std::string* text, const char* from, const char* to);

// Escapes a text for HTML: & < > " become &amp; &lt; &gt; &quot;. A text that holds any of them is cut to 511
// characters.
void ReplaceSpecailStrs(std::string& text);

// A plain text as a template shows it unchanged: one level of escapes is taken off every value, so an "&" that already
// stands in front of "amp;", "lt;", "gt;" or "quot;" is escaped.
std::string templateText(std::string_view text);

// Replaces every occurrence of `from`, going on behind each replacement; an empty `from` changes nothing. Always 1.
int ReplaceStrByStr(std::string& text, std::string_view from, std::string_view to);

// For the character '"' only: appends `source` to `output` with a backslash before each '"'. Always 1.
int restructureString(char character, std::string_view source, std::string& output);

// Removes blanks (not other white space) at both ends.
void removeSpace(std::string& text);

// The value of an ini key, `fallback` when it is empty, cut to 1023 characters and escaped for HTML.
std::string GetStringAndReplaceChar(ETL_SubClass& section, const char* key, const char* fallback);

// Writes the part of `path` behind its last "/" or "\" (all of it when there is none). False when an argument is null.
bool GetSimpleUpdateFileName(const char* path, std::string* name);

// For "label:file": the file, and up to 255 characters of the label into `label` when that is not null. Any other text,
// or null, gives an empty text and leaves `label` alone.
std::string GetRealRingName(const char* ring, std::string* label);
