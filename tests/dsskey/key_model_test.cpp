#include "tests/dsskey/key_model_test.h"

#include <sstream>

OrbList<DssKey> KeyModelTest::keys(const std::vector<std::string>& texts) {
  OrbList<DssKey> list;
  for (const std::string& text : texts) {
    std::istringstream stream(text);
    DssKey key;
    stream >> key.keyIndex >> key.dktype >> std::ws;
    for (const DSSK_PARA_TYPE parameter : kKeyParameters) std::getline(stream, attributeOf(key, parameter).text, '/');
    list.push_back(key);
  }
  return list;
}

bool KeyModelTest::save(DSSK_MODEL_TYPE family, const std::vector<std::string>& texts, int page) {
  const OrbList<DssKey> list = keys(texts);
  return model.SetDsskeyList(family, &list, page, true);
}

std::string KeyModelTest::shown(DSSK_MODEL_TYPE family, const std::vector<int>& indexes, int page) {
  std::string all;
  for (const int index : indexes) {
    DssKey key;
    key.keyIndex = index;
    const bool isRead = model.GetDsskey(&key, family, page, false);
    std::string text = isRead ? std::to_string(index) + " " + std::to_string(key.dktype) : "none";
    for (const DSSK_PARA_TYPE parameter : kKeyParameters) {
      const Dsskey_Attr& attribute = attributeOf(key, parameter);
      if (isRead) text += (parameter == 0 ? " " : "/") + attribute.text + (attribute.enabled ? "*" : "");
    }
    all += (all.empty() ? "" : ", ") + text;
  }
  return all;
}

std::string KeyModelTest::items(const std::string& name, const std::vector<int>& numbers) const {
  pugi::xml_document document;
  document.load_file(file("/config/data/" + name).c_str());
  std::string all;
  for (const int number : numbers) {
    pugi::xml_node item = document.first_child().first_child();
    for (int i = 1; i < number; ++i) item = item.next_sibling();
    const pugi::xml_node data = item.first_child();
    all += (all.empty() ? "" : ", ") + std::to_string(number) + " " + item.attribute("type").value();
    for (const char* attribute : {"value", "line", "label", "extension"}) {
      all += (*attribute == 'v' ? " " : "/") + std::string(data.attribute(attribute).value());
    }
  }
  return all;
}

std::string KeyModelTest::choices(const OrbList<KeyValue>& list) {
  std::string all;
  for (const KeyValue& choice : list) {
    all += (all.empty() ? "" : ", ") + std::to_string(choice.key) + "=" + choice.value;
  }
  return all;
}
