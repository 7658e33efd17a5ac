// What page handlers do around their own work.
#pragma once

#include <string>

#include "framework/servlet_base.h"

// Answers with the notice page: `message`, and the page to go back to ("notice" for the one before). `repeat` makes
// the browser wait until the phone is back.
void SetNoticePage(HttpResponse* response, bool repeat, const char* page, const char* message);

// What a page shows while the phone restarts.
inline constexpr char kRebootingNotice[] = "Rebooting , please wait ...";

// True when the form asks for a restart (its field "reboot" is "true").
bool wantsReboot(HttpRequest* request);

// True, with the notice as the answer, while a call is in progress: nothing may be saved then.
bool IsInTalking(HttpResponse* response);

// True when an upload fits: the folder's size with it (or the upload alone when it replaces what is there) stays
// within `maximum` bytes, and `reserve` bytes of the partition stay free. Otherwise `error` says why.
bool CheckUploadFile(HttpRequest* request, const char* partition, const char* folder, std::string* error, bool replace,
                     long maximum, long reserve);

// True when an upload fits under "/config/" in place of the file or folder at `existing`. Otherwise the notice is the
// answer. False without an answer when an argument is missing.
bool CheckConfigFreeSize(HttpRequest* request, HttpResponse* response, const char* existing, bool isFolder);

// The path of the file uploaded in a field, stored under `pattern` (ending in "XXXXXX"). Empty when there is none, and
// when the field holds a text in place of a file: that must never be taken for a path.
std::string uploadedFile(HttpRequest* request, const char* field, const char* pattern);

// Moves an upload over the target. False, with the target gone, when the rename fails.
bool RenameUploadFile(const char* upload, const char* target);

// Runs a shell command; false only for null. Words that are not literals have passed shellQuote(), paths phonePath().
bool CommandShell(const char* command);

// Asks the phone application to reboot after `delay` seconds; a negative delay means its usual 2.
void sysReboot(int delay);

// How many accounts this phone has.
int GetAccountMax();

// The rows of an account selector: "index", "selected" ("1" or "0"), "accountno". `selected` may be null.
TMPL_loop* GetAccountLoop(const char* selected, bool withAuto);

// The text of a registration status code; "Unknown" for a code without one.
void MapAccountStatusToString(std::string* text, int status);

// The path of an account's SIP file.
std::string accountFile(int account);

// The SIP server that an account (0 to 5) registers with. False for any other account.
bool GetSipServerHost(std::string& host, std::string& port, int account);

// The registered account whose "user@host" is `uri`, or -1.
int GetAccountID(const char* uri);

// Texts shared with the phone's applications: writing makes the text with `size` bytes when it does not exist and cuts
// to what it holds; reading gives an empty text when it does not exist.
void writeShareText(const char* name, const char* text, int size);
std::string readShareText(const char* name);

// True when the local directory changed behind the pages' back; `type` is the mark's value. False with `type`
// untouched when there is no mark.
bool IsContactNeedUpdate(int& type);
// Takes that mark back.
void SetDefalutUpdate();
