// What the browser asks for again and again on an account's page.
#pragma once

#include "framework/servlet_base.h"

// Answers with the registration status of the account "acc", its code in decimal; a disabled account's is 0 without
// asking the phone application.
int answerRegistrationStatus(HttpRequest* request, HttpResponse* response);
