// The key model: which types and parameters a family of keys offers, which keys a page shows, what there is to choose
// from, and the phone's stores of keys. This class keeps keys in the ini files of the phone application.
//
// Operations on null records or lists do nothing and give false, as each failure does (logged). Texts in records are
// plain, but for those that the base reads from its ini files, which are escaped for HTML. Nothing here is locked: the
// caller holds the named lock "DsskeyFile" while it reads or writes a page. A page of keys reads and writes each file
// once.
#pragma once

#include <memory>
#include <string>

#include "dsskey/dsskey_records.h"

class ETL_SubClass;

class DssKey_Model_Base {
 public:
  DssKey_Model_Base();

  // Fills the key of key->keyIndex from the store. `page` is the module of expansion keys (from 1). With `keepType` the
  // parameters are read as those of key->dktype, otherwise the type is the stored one, DT_NA when the family does not
  // offer it.
  virtual bool GetDsskey(DssKey* key, DSSK_MODEL_TYPE family, int page, bool keepType);

  // Which keys a page (or module) shows. For expansion keys this asks the phone application what modules there are,
  // and keeps their kind.
  virtual void GetKeyIndexList(Key_Display* display, DSSK_MODEL_TYPE family, int page);

  // Stores the keys of a page, and announces what changed when `notify` is set. Records without a type
  // (kNoKeyType) leave what is stored.
  virtual bool SetDsskeyList(DSSK_MODEL_TYPE family, const OrbList<DssKey>* keys, int page, bool notify);

  // Restores the factory keys of a family, announced; programmable keys have some, others give false.
  virtual bool SetFactoryDsskeyList(DSSK_MODEL_TYPE family);

  // True when the family offers the type.
  virtual bool CheckSupportDKtype(DSSK_MODEL_TYPE family, int type);

  // Stores one key in the ini store. True when anything changed.
  virtual bool SetDsskey(DSSK_MODEL_TYPE family, const DssKey* key, int page);

  // True when a key of that type has the parameter. `keyIndex` matters for labels alone; -1 for no key in particular.
  virtual bool EnableParamer(DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family, int type, int keyIndex);
  virtual bool EnableValue(DSSK_MODEL_TYPE family, int type, int keyIndex);
  virtual bool EnableLabel(DSSK_MODEL_TYPE family, int type, int keyIndex);
  virtual bool EnableLine(DSSK_MODEL_TYPE family, int type, int keyIndex);
  virtual bool EnableExtension(DSSK_MODEL_TYPE family, int type, int keyIndex);

  // The section of a key in the user's ini file (made by its first flush) or the factory's. Null when the file cannot
  // be opened or the family is unknown.
  virtual std::unique_ptr<ETL_SubClass> GetRegistryHandle(DSSK_MODEL_TYPE family, int keyIndex, int module,
                                                          bool factory);

  // True when the parameter of such a key is chosen from a list.
  virtual bool IsAttrWithList(int type, DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family);

  // True when the line of such a key names a list rather than an account.
  virtual bool IsLineWithGroupList(int type);

  // Choice lists; each appends to `choices`. With `enabled` false the choice of a line is "N/A" alone.
  virtual bool GetAttrListByDKtype(OrbList<KeyValue>* choices, int type, DSSK_PARA_TYPE parameter, bool enabled);
  virtual bool GetLineListByDKtype(OrbList<KeyValue>* choices, int type, bool enabled);
  virtual bool GetValueListByDKtype(OrbList<KeyValue>* choices, int type);
  virtual void GetBsftGroupList(OrbList<KeyValue>* choices);  // groups of the network directory
  virtual bool GetXMLGroupList(OrbList<KeyValue>* choices);   // remote phonebooks
  virtual bool GetLocalGroupList(OrbList<KeyValue>* choices);
  virtual void GetHistoryList(OrbList<KeyValue>* choices);
  virtual bool GetNetworkCalllogList(OrbList<KeyValue>* choices);
  virtual bool GetAccoutList(OrbList<KeyValue>* choices, bool withAuto);

  virtual ~DssKey_Model_Base() = default;

  // True when keys of the family can have the parameter at all.
  bool CheckSupportParamer(DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family);
  bool IsBroadsoftDKtype(int type);

  // Appends the types that the family offers, in the order of the type picker.
  bool GetDKtypeList(OrbList<DssKey_Type>* types, DSSK_MODEL_TYPE family);

  // Appends the keys that a page shows, as they are stored or as the factory set them. Stops with false at the first
  // one that cannot be read.
  bool GetDsskeyList(OrbList<DssKey>* keys, DSSK_MODEL_TYPE family, const Key_Display* display, int page);
  bool GetFactoryData(OrbList<DssKey>* keys, DSSK_MODEL_TYPE family, const Key_Display* display, int page);
  bool GetFactoryDsskey(DssKey* key, DSSK_MODEL_TYPE family, int page);

  // Fills one parameter of a key from its section.
  bool GetAttrValueList(Dsskey_Attr* attribute, int type, DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family,
                        ETL_SubClass* section, int keyIndex);

  // Fills value, label and extension from what the phone application wrote of the key's busy lamp.
  bool GetBlfListDssKey(DssKey* key, DSSK_MODEL_TYPE family);

  // Tells the applications that keys of a family changed: a byte for each, its number from 1. Null tells nothing.
  bool SendMessage(DSSK_MODEL_TYPE family, const char* changedKeys, int page);

 protected:
  // True when the parameter of a record is to be stored: a key of its type has it, and its text is not the one that
  // stands for an extension that nobody shows.
  bool isToBeStored(DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family, const DssKey& key);
  // True for the list of busy lamps, which the phone application writes out while the services are on.
  static bool isBlfListInUse(int type);

 private:
  using KeyReader = bool (DssKey_Model_Base::*)(DssKey* key, DSSK_MODEL_TYPE family, int page);
  bool readKeys(OrbList<DssKey>* keys, DSSK_MODEL_TYPE family, const Key_Display* display, int page, KeyReader read);
  // Completes what is shown of a page of expansion keys.
  void showModule(Key_Display& display);
  bool readStoredKey(DssKey* key, DSSK_MODEL_TYPE family, int page);

  int moduleKind_ = 0;  // of the expansion modules: 1 with 38 keys, 2 with 40; 0 until they were asked for
  int phoneType_;
};
