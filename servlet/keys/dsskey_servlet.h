// The page "dsskey": the line keys, the programmable keys and the keys of expansion modules, a family and page at a
// time. All rules and stores are the key model's.
#pragma once

#include <string>

#include "dsskey/dsskey_k7x_model.h"
#include "framework/servlet_base.h"

class DssKeyServlet : public HttpServlet {
 public:
  int init() override;
  int onRequest(HttpRequest* request, HttpResponse* response) override;
  int destory() override;

 private:
  // Which keys are shown or stored. The page of expansion keys is the module from 1.
  struct KeyPage {
    DSSK_MODEL_TYPE family = DSSK_MEMORY;
    int page = 1;
  };

  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int typeChanged(HttpRequest* request, HttpResponse* response);
  int ResetDefaultData(HttpRequest* request, HttpResponse* response);

  static void storeSettings(HttpRequest* request);
  static TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request, DSSK_MODEL_TYPE family);
  // Has the phone application write out the busy lamps of a page's keys.
  static void SendMsgQueryBlfList(DSSK_MODEL_TYPE family, int page);

  // What the template shows: dsskey_loops.cpp.
  static void GetDKtypeDisplay(std::string& buffer, int type, DSSK_MODEL_TYPE family);
  static TMPL_loop* DevDataInfo2Loop(const Key_Display& display);
  static TMPL_loop* AttrValueList2Loop(const OrbList<KeyValue>& choices);
  static TMPL_loop* DKtypeList2Loop(const OrbList<DssKey_Type>& types, DSSK_MODEL_TYPE family);
  TMPL_loop* DsskConfigData2Loop(const OrbList<DssKey>& keys, DSSK_MODEL_TYPE family);
  TMPL_varlist* keyRow(const DssKey& key, DSSK_MODEL_TYPE family, int keysOnPage);

  // What the browser is told of a key whose type is chosen anew: dsskey_type_changed.cpp.
  // Appends the choices; false, with nothing appended, when there are none.
  static bool AttrValueList2String(const OrbList<KeyValue>& choices, std::string& out);
  static std::string typeChangedText(const DssKey& key);

  // What is asked for, and the keys of a form: dsskey_form.cpp.
  static DSSK_MODEL_TYPE GetDefaultDsskey(int phoneType);
  static KeyPage pageToLoad(HttpRequest* request);
  // False (logged) when the form does not say which page it is.
  static bool pageToWrite(HttpRequest* request, KeyPage& keys);
  static bool GetKeyConfigDataFromPage(DssKey* key, HttpRequest* request);
  // False when the display does not say which keys there are.
  static bool PageData2ConfigData(HttpRequest* request, OrbList<DssKey>& keys, const Key_Display& display);

  Dsskey_K7X_Model* model_ = nullptr;
};
