// The files that the page "network-adv" brings to the phone.
#pragma once

#include "framework/servlet_base.h"

// Stores the file of the field "pemFile" as the certificate that the field "type" names ("ca" or "client"), and the
// name that the browser gave it. False, with nothing stored, without a file or for another type.
bool takeDot1xFile(HttpRequest* request);

// Puts what the archive of the field "pemFile" holds in the place of the VPN's configuration, which is gone in any
// case. False, with nothing stored, without a file and for an archive that holds more than plain files and folders.
bool takeVpnArchive(HttpRequest* request);
