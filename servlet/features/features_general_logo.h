// The logo on the phone's screen.
#pragma once

#include "framework/servlet_base.h"

// Adds "userLogoHide" and, for the phones whose screen shows a logo of one's own, "existLogo" when there is one.
TMPL_varlist* addLogo(TMPL_varlist* list);

// Takes the upload of the field "logoFile" as the new logo: "success", "fail", "big" (too large for the screen or the
// disk: the old one stays) or "talking"; null when there is no upload.
const char* takeLogo(HttpRequest* request);

// Removes the logo and tells the phone.
void deleteLogo();
