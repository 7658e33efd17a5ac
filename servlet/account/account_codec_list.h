// The audio codecs of an account.
#pragma once

#include <string>

#include "platform/orb_list.h"

// One of an account's 19 codec slots.
struct Codec_Info {
  int index = 0;  // the slot, from 0
  bool enabled = false;
  std::string name;
  int priority = 0;  // the smaller, the more it is preferred
};

// Appends the account's used slots in slot order; false for a null list or a negative account.
bool GetCodecConfigData(OrbList<Codec_Info>* codecs, int account);

// Sorts by ascending priority, equal ones as they stand; false for a null list.
bool SortAudioByPriority(OrbList<Codec_Info>* codecs);

// Appends posted entries "name:slot", enabled ones with priorities from 1 on; what is no entry is skipped.
bool PutCodecData2List(OrbList<Codec_Info>& codecs, const OrbList<std::string>& entries, bool enabled);

// Stores the switch of each codec and the priority of the enabled ones. The last entry of a slot counts; slots that do
// not exist are left out.
void StoreCodecs(const OrbList<Codec_Info>& codecs, int account);
