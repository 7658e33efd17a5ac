// Pages that need more than their name to be opened again after a login.
#pragma once

#include <string_view>

// True for the pages of one account, which are opened with the field "acc".
constexpr bool isAccountPage(std::string_view page) {
  return page == "account-basic" || page == "account-adv" || page == "account-codec" || page == "phone-features-line" ||
         page.starts_with("account-register");
}

// The page of the keys, which is opened with the field "model".
inline constexpr std::string_view kKeyPage = "dsskey";
