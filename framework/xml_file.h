// XML files of the phone. All paths are paths of the phone.
#pragma once

#include <pugixml.hpp>

// Reads the file with the parser's default options. False, with an empty document, when it cannot be read. A file that
// is no well-formed XML counts as one without a root element: an empty document, true.
bool loadXml(const char* path, pugi::xml_document& document);

// Replaces the file whole by the document, indented with one tab a level. False, with the old file untouched, when that
// fails, and for texts with control characters that XML cannot carry.
bool saveXml(const char* path, const pugi::xml_document& document);
