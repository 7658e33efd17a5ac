// The key model of this series of phones: keys are read from XML files and written to these and, but for programmable
// keys, to the ini store. Line keys are three pages of nine, and a locked one of the first page repeats on the others.
// Memory keys cannot be written.
#pragma once

#include <pugixml.hpp>

#include "dsskey/dsskey_model_base.h"
#include "dsskey/page_files.h"

class Dsskey_K7X_Model : public DssKey_Model_Base {
 public:
  bool GetDsskey(DssKey* key, DSSK_MODEL_TYPE family, int page, bool keepType) override;
  // A page of line keys outside 1 to 3 shows nothing.
  void GetKeyIndexList(Key_Display* display, DSSK_MODEL_TYPE family, int page) override;
  // False, with nothing stored, for memory keys, a page of line keys outside 1 to 3, and a key file that cannot be
  // read, is no XML or has another root.
  bool SetDsskeyList(DSSK_MODEL_TYPE family, const OrbList<DssKey>* keys, int page, bool notify) override;
  bool SetFactoryDsskeyList(DSSK_MODEL_TYPE family) override;
  bool CheckSupportDKtype(DSSK_MODEL_TYPE family, int type) override;
  bool EnableValue(DSSK_MODEL_TYPE family, int type, int keyIndex) override;
  bool IsAttrWithList(int type, DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family) override;
  bool GetValueListByDKtype(OrbList<KeyValue>* choices, int type) override;

  // Moves the cursor by `step` items (items are appended behind the last one) and writes the key there. True when
  // anything changed. A cursor that left the first item backwards is on none.
  using DssKey_Model_Base::SetDsskey;
  bool SetDsskey(DSSK_MODEL_TYPE family, const DssKey* key, pugi::xml_node& item, int step, int page);

  // The item of a key in its file. False when there is none.
  bool GetXmlDataNode(DSSK_MODEL_TYPE family, int keyIndex, XmlDocument& document, pugi::xml_node& item, int module);

  // True for a line key that is locked: the record or, with a null record, the stored key of the first page in the
  // place of `keyIndex`.
  bool IsLineKeyLocked(DSSK_MODEL_TYPE family, const DssKey* key, int keyIndex);

  // Fills one parameter of a key from its "itemdata" element.
  using DssKey_Model_Base::GetAttrValueList;
  bool GetAttrValueList(Dsskey_Attr* attribute, int type, DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family,
                        pugi::xml_node itemdata, int keyIndex);
};

// The one model of the process, made by the first call.
Dsskey_K7X_Model* GetModelInitObj();
// Frees it; nothing uses it afterwards. A later GetModelInitObj() makes another one.
void FreeModelInitObj();
