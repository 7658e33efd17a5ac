#include "servlet/contacts/contacts_preview_servlet.h"

#include <fstream>
#include <iterator>

#include "framework/action_dispatch.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/phone_messages.h"
#include "framework/uploads.h"
#include "platform/device.h"
#include "platform/local_directory.h"
#include "platform/log.h"
#include "platform/phone_root.h"

using NS_DIRECTORY::CContactLocalManager;

namespace {
constexpr int kBlockSize = 1024;

constexpr const char* kOperationTexts[] = {
    "",
    "Error:Invalid file!",
    "Error:Duplicate group!",
    "Error:Duplcate contact!",
    "Error:Too many group!",
    "Error:Too many local contact!",
    "Error:Too many blacklist!",
    "Error:Invalid path!",
    "Error:Group empty!",
    "Error:Contact name empty!",
    "Error:No default group!",
    "Error:No contact group!",
    "Error:Contact is asyncing!",
};

}  // namespace

int ContactsFileOperatorServlet::init() {
  phoneType_ = GetPhoneType();
  return 0;
}

int ContactsFileOperatorServlet::destory() {
  DeleteCSVDate();
  return 0;
}

int ContactsFileOperatorServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsFileOperatorServlet> kActions[] = {
      {"exportxml", &ContactsFileOperatorServlet::downloadContactXMLFile},
      {"importxml", &ContactsFileOperatorServlet::uploadContactXMLFile},
      {"uploadcvs", &ContactsFileOperatorServlet::uploadContactCSVFile},
      {"importcsv", &ContactsFileOperatorServlet::importCSV},
      {"exportcvs", &ContactsFileOperatorServlet::downloadContactCSVFile},
  };
  response->setContentType("text/html");
  if (request->getParameter("q") && IsInTalking(response)) return 1;
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

void ContactsFileOperatorServlet::SetUploadErrorNotice(std::string& text, int code) {
  const bool isKnown = code >= 0 && code < static_cast<int>(std::size(kOperationTexts));
  text = isKnown ? kOperationTexts[code] : "Error:Upload error!";
}

int ContactsFileOperatorServlet::operateFile(DirectoryFile operation) {
  return sendMessage(kPhoneApplication, kConfigChanged, static_cast<int>(ConfigArea::kDirectoryFile),
                     static_cast<int>(operation));
}

int ContactsFileOperatorServlet::refuse(HttpResponse* response, const char* notice) {
  SetNoticePage(response, false, "contactsbasic", notice);
  return 1;
}

int ContactsFileOperatorServlet::refuse(HttpResponse* response, int code) {
  std::string text;
  SetUploadErrorNotice(text, code);
  return refuse(response, text.c_str());
}

void ContactsFileOperatorServlet::sendAsFile(HttpResponse* response, const char* type, const char* disposition) {
  response->setContentType(type);
  response->setHeader("Content-disposition", disposition);
  response->setHeader("Accept-Ranges", "bytes");
  response->setHeader("Expires", "-1");
}

int ContactsFileOperatorServlet::downloadContactXMLFile(HttpRequest*, HttpResponse* response) {
  if (const int result = operateFile(DirectoryFile::kExport); result != 0) {
    log_log(kWebLog, kLogWarning, "import file error! result = %d\n", result);
    return refuse(response, "Error:Export contact file error!");
  }
  sendAsFile(response, "text/xml", "attachment; filename=contact.xml");
  std::ifstream file(phonePath(kDirectoryFilePath), std::ios::binary);
  if (!file) {
    log_log(kWebLog, kLogWarning, "ContactsFileOperatorServlet::downloadContactXMLFile() End. failed to open file\n");
    return 1;
  }
  char block[kBlockSize];
  while (file.read(block, kBlockSize), file.gcount() > 0) {
    response->write(block, 1, static_cast<int>(file.gcount()));
  }
  return 1;
}

int ContactsFileOperatorServlet::uploadContactXMLFile(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const std::string upload = uploadedFile(request, "frameUploadXMLFile", "/config/fileupload_XXXXXX");
  if (upload.empty() || !RenameUploadFile(upload.c_str(), kDirectoryFilePath)) {
    if (!upload.empty()) removeFile(upload.c_str());
    return refuse(response, "Error:Import contact file error!");
  }
  const int result = operateFile(DirectoryFile::kImport);
  CContactLocalManager* directory = CContactLocalManager::GetInstance();
  if (result == 0 && directory) {
    directory->ReloadGroupXml();
    directory->ReloadContactXml();
  }
  removeFile(kDirectoryFilePath);
  if (result != 0) return refuse(response, result);
  response->sendRedirect("/servlet?p=contactsbasic&q=load&num=1&group=0");
  return 1;
}

PHONE_FACTORY(createContactsFileOperatorServlet, HttpServlet, ContactsFileOperatorServlet);
