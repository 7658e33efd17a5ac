// The mark by which other programs say that they changed the local directory.
#pragma once

// True when the directory changed behind the pages' back; `type` is the mark's value. False with `type` untouched when
// there is no mark.
bool IsContactNeedUpdate(int& type);
// Takes the mark back.
void SetDefalutUpdate();

// Has the local directory read again what other programs changed, and takes the mark back.
void reloadMarkedContacts();
