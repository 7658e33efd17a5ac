// The trusted certificates as the page lists them.
#pragma once

#include "framework/servlet_base.h"

// A row for each installed certificate, then empty ones: ten rows at least, numbered from 1.
TMPL_loop* trustedCertificateRows();
