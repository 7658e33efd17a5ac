// The phone's rings, wallpapers and contact photos: those it came with and those its users uploaded.
#pragma once

#include <list>
#include <string>

#include "framework/servlet_base.h"

enum RING_OPERATOR_TYPE {
  RING_PREFERENCE = 0,  // no first entry
  RING_ACCOUNT = 1,     // first "Common"
  RING_CONTACT = 2,     // first "Auto"
  RING_ALERT_INFO = 3,  // no first entry; the selected value is a position in the ring numbering
};

// The rows of a ring choice ("selValue", "selName", "selected"). `selected` may be null; rings are selected by their
// file name, whatever their source. With sources, values are "Resource:Ring1.wav".
TMPL_loop* GetRingToneLoop(const char* selected, RING_OPERATOR_TYPE kind, bool withSource);

// The same for wallpapers, selected by the whole value. Null (logged) without a selected value.
TMPL_loop* GetWallpaperLoop(const char* selected);

// The rows of a contact photo choice ("selValue", "selName").
TMPL_loop* GetPhotoLoop();

// Appends rows for the names to the loop. `selected` (a file name) and `source` may be null.
void AddRingToneLoop(TMPL_loop** loop, const std::list<std::string>& names, const char* selected, const char* source);

// All rings by their position: "default-ring.wav", the rings of the phone, those of its users; each group sorted.
std::list<std::string> ringNumbering();
