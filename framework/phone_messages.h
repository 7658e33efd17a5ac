// Talking to the phone's applications. A message to an application that does not run is lost; a question to it gives
// kMessageNoAnswer.
#pragma once

#include <string>

#include "platform/messaging.h"
#include "platform/phone_application.h"

// How long a page waits for an answer, in milliseconds.
inline constexpr int kAnswerTimeout = 3000;

// Queues a message and returns at once.
void postMessage(const char* thread, unsigned message, int wParam = 0, int lParam = 0);
// The same with a text. False when it is lost.
bool postText(const char* thread, unsigned message, const std::string& text, int wParam = 0, int lParam = 0);

// Waits for the answer, as long as it takes.
int sendMessage(const char* thread, unsigned message, int wParam = 0, int lParam = 0);
int sendText(const char* thread, unsigned message, const std::string& text, int wParam = 0, int lParam = 0);
// Waits `milliseconds` at the most.
int askFor(int milliseconds, const char* thread, unsigned message, int wParam = 0, int lParam = 0);
int askWithText(int milliseconds, const char* thread, unsigned message, const std::string& text);

// Tells every application that an area changed.
void broadcastConfigChanged(ConfigArea area, int detail = 0);
// The same with `size` bytes of data.
void broadcastConfigChanged(ConfigArea area, int detail, const void* data, int size);
// Tells the phone application alone.
void postConfigChanged(ConfigArea area, int detail = 0);

// True when the phone application says so; not when nobody answers.
bool isCallInProgress();

// How an account's registration stands (MapAccountStatusToString gives its text), waiting kAnswerTimeout at the most.
int queryRegistrationState(int account);
