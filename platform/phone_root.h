// Where the phone's file tree lies.
#pragma once

#include <string>
#include <string_view>

// Maps an absolute path of the phone ("/config/data/htpasswd") to the path to open. On a phone this is the path
// itself; elsewhere the folder that stands for the phone's root is put in front. A path that climbs out of the root
// by "..", holds a NUL or is not absolute gives an empty text, which no file operation can open.
//
// Code that opens, lists, renames or removes files itself calls this first. The other functions of platform/ take
// paths of the phone and map them on their own: never hand them a mapped path.
std::string phonePath(std::string_view path);
