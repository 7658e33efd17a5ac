// XML documents that a trusted server has the phone show.
#pragma once

#include "framework/servlet_base.h"

// Stores a pushed document, from the field "editPushXML" or from the body (behind "xml="), and has the phone show it.
// False when it was refused or could not be stored.
bool ProcessPushXml(HttpRequest* request, bool fromField);
