// What phone this is.
#pragma once

// The model number, e.g. 46.
int GetPhoneType();

// The hardware version; never null, valid until the next call.
const char* str_dev_get_hardware_version();
