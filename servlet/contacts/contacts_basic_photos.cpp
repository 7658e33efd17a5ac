// The contacts page: photos that users bring.
#include <string>

#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/query_text.h"
#include "framework/text_list.h"
#include "framework/uploads.h"
#include "platform/local_directory.h"
#include "platform/log.h"
#include "servlet/contacts/contacts_basic_servlet.h"
#include "servlet/contacts/contacts_photo_store.h"

using NS_DIRECTORY::CContactLocalManager;

namespace {

constexpr char kNotScaled[] = "Fail to upload photo ! [Can not compress the picture]";
constexpr char kTooManyPixels[] = "Fail to upload photo ! [The Resolution of the picture is too large]";

int refuseUpload(HttpResponse* response, const char* notice) {
  SetNoticePage(response, false, "contactsbasic", notice);
  return 1;
}

}  // namespace

int ContactsBasicServlet::uploadPhoto(HttpRequest* request, HttpResponse* response) {
  const std::string upload = uploadedFile(request, "uploadPhoto", "/tmp/fileupload_XXXXXX");
  const std::string name = uploadedFileName(request, "uploadPhoto");
  if (upload.empty() || !isPhotoName(name) || !RenameUploadFile(upload.c_str(), photoSource(name).c_str())) {
    if (!upload.empty()) removeFile(upload.c_str());
    return refuseUpload(response, kNotScaled);
  }
  const int result = storePhoto(name);
  if (result != 1) {
    removeFailedPhoto(name);
    return refuseUpload(response, result == 2 ? kTooManyPixels : kNotScaled);
  }
  announcePhoto(name);
  response->sendRedirect(("/servlet?p=contactsbasic&q=load&num=1&group=&photo=" + encodeQueryValue(name)).c_str());
  return 1;
}

int ContactsBasicServlet::deletePhoto(HttpRequest* request, HttpResponse* response) {
  const char* photo = request->getParameter("Photo");
  OrbList<std::string> pieces;
  if (!photo || !String2List(pieces, photo, ':') || pieces.size() < 2 || !isFileName(*++pieces.begin())) {
    log_log(kWebLog, kLogWarning, "photo name error.\n");
    return 1;
  }
  if (pieces.front() != "Config") {
    log_log(kWebLog, kLogWarning, "False:only can remove config photo.\n");
    return 1;
  }
  const std::string name = *++pieces.begin();
  removeFile(userPhotoPath(name).c_str());
  CContactLocalManager* directory = CContactLocalManager::GetInstance();
  if (!directory || directory->SetDefaultPhoto(photo) != 0) {
    log_log(kWebLog, kLogWarning, "ContactsBasicServletset::deletePhoto set default name fail.\n");
  }
  announcePhoto(name);
  response->sendRedirect("/servlet?p=contactsbasic&q=load&num=1&group=");
  return 1;
}
