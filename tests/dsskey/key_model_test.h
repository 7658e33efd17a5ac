// A key model on a phone of its own, and keys as texts.
#pragma once

#include <string>
#include <vector>

#include "dsskey/dsskey_k7x_model.h"
#include "tests/support/phone_test.h"

class KeyModelTest : public PhoneTest {
 protected:
  // "INDEX TYPE value/line/label/extension", one a key.
  static OrbList<DssKey> keys(const std::vector<std::string>& texts);
  bool save(DSSK_MODEL_TYPE family, const std::vector<std::string>& texts, int page = 1);
  // Stored keys as they are shown, the same form with a "*" behind each parameter that the key has; "none" for a key
  // that cannot be read.
  std::string shown(DSSK_MODEL_TYPE family, const std::vector<int>& indexes, int page = 1);
  // The items of a key file by their numbers from 1, "NUMBER TYPE value/line/label/extension".
  std::string items(const std::string& name, const std::vector<int>& numbers) const;
  // "0=Line 1, 1=Line 2"
  static std::string choices(const OrbList<KeyValue>& list);

  Dsskey_K7X_Model model;
};
