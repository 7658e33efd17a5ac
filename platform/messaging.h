// Messages between the phone's applications.
#pragma once

// An application's message queue; null when no application of that name runs. Never freed.
struct MessageThread;

// Answer of a send that nobody answered in time, or that had nobody to go to.
inline constexpr int kMessageNoAnswer = -1;

MessageThread* msgGetThreadByName(const char* name);

// Queues a message and returns at once. 0, or -1 when `thread` is null or takes no more messages. The data block, if
// any, is copied.
int msgPostMsgToThread(MessageThread* thread, unsigned message, int wParam, int lParam);
int msgPostMsgToThreadEx(MessageThread* thread, unsigned message, int wParam, int lParam, const void* data, int size);

// Waits for the receiver's answer and returns it; kMessageNoAnswer when `thread` is null. The Timeout form gives up
// after `milliseconds`.
int msgSendMsgToThread(MessageThread* thread, unsigned message, int wParam, int lParam);
int msgSendMsgToThreadEx(MessageThread* thread, unsigned message, int wParam, int lParam, const void* data, int size);
int msgSendMsgToThreadTimeoutEx(MessageThread* thread, unsigned message, int wParam, int lParam, int milliseconds,
                                const void* data, int size);

// Queues a message to every application.
int msgBroadpostThreadMsg(unsigned message, int wParam, int lParam);
int msgBroadpostThreadMsgEx(unsigned message, int wParam, int lParam, const void* data, int size);
