// What a search over the settings looks through.
#pragma once

#include <string>

namespace host {

class Rights;
class RightsTable;

// The navigation's pages and those they link to, with their settings, in English, as far as these rights show them
// (null: all), as JSON:
// {"pages":[{"title":"ACD","heading":"Automatic call distribution","lead":"…","address":"/servlet?p=…",
//            "settings":[["ID","Label","Help","Heading of the card","… of the group"],…]},…]}
// A setting without an id has an empty one; of the texts, those at its end that are empty are left out.
std::string settingsIndex(const RightsTable& table, Rights* rights);

}  // namespace host
