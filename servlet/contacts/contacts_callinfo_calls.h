// The calls of the phone's history, as the page "contacts-callinfo" shows them.
#pragma once

#include <pugixml.hpp>

#include "framework/servlet_base.h"

// Adds the loops "callloop", "receiveloop", "missloop" and "forwardloop": the calls of the history in its order, each
// numbered from 1.
TMPL_varlist* addCalls(TMPL_varlist* list, pugi::xml_node history);
