#include "servlet/contacts/contacts_basic_results.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "framework/notice.h"
#include "framework/query_text.h"
#include "servlet/contacts/contacts_basic_servlet.h"

using namespace NS_DIRECTORY;

namespace {

struct ResultText {
  std::int32_t result;
  const char* text;
};
constexpr ResultText kTexts[] = {
    {kDirectoryDone, ""},
    {kGroupExists, "Error:Group already existed!"},
    {kContactExists, "Error:Contact already existed!"},
    {kGroupIdInvalid, "Error:Invalid group id!"},
    {kGroupUnknown, "Error:Group not existed!"},
    {kContactUnknown, "Error:Contact not existed!"},
    {kGroupFixed, "Error:Group can not delete!"},
    {kContactsFull, "Error:Contact list is full!"},
    {kBlacklistFull, "Error:Black list is full!"},
    {kGroupsFull, "Error:Group  list is full!"},
    {kContactNotLocal, "Error:Contact is not local!"},
    {kContactNotInBlacklist, "Error:Contact is not black!"},
    {kDirectoryBusy, "Error:Contact is asyncing!"},
    {kDirectoryNetworkError, "Error:Network error!"},
    {kPhotoNameInvalid, "Error:Photo name error!"},
};

constexpr std::size_t kLongestNumber = 11;

std::string numberInAddress(const char* text) {
  const std::string_view number = text ? text : "";
  return number.size() <= kLongestNumber ? encodeQueryValue(number) : "";
}

}  // namespace

void ContactsBasicServlet::SetContactsErrorNotice(std::string& text, std::int32_t result) {
  const auto found = std::ranges::find(kTexts, result, &ResultText::result);
  text = found != std::end(kTexts) ? found->text : "Error:Other error!";
}

bool findGroup(int id, ContactGroupData& group) {
  CContactLocalManager* directory = CContactLocalManager::GetInstance();
  if (directory && directory->GetGroupDataByID(group, id)) return true;
  group = {};
  return false;
}

bool isRefused(HttpResponse* response, std::int32_t result) {
  if (result >= 0) return false;
  std::string text;
  ContactsBasicServlet::SetContactsErrorNotice(text, result);
  SetNoticePage(response, false, "contactsbasic", text.c_str());
  return true;
}

std::string listAddress(const char* page, const char* group) {
  return "/servlet?p=contactsbasic&q=load&num=" + numberInAddress(page) + "&group=" + numberInAddress(group);
}
