// The page of contact files: CSV files, shown first and imported then.
#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "framework/uploads.h"
#include "platform/log.h"
#include "servlet/contacts/contacts_preview_document.h"
#include "servlet/contacts/contacts_preview_loops.h"
#include "servlet/contacts/contacts_preview_servlet.h"

namespace {

constexpr std::size_t kUploadsKept = 4;
constexpr std::size_t kBytesKept = 64 << 20;
constexpr char kUploadAttribute[] = "contactUpload";  // of a session: names its upload
constexpr char kNoData[] = "Get CSVFile data error!";
constexpr int kTooManyContacts = 5;  // as the phone application says it

bool isSet(HttpRequest* request, const char* field) {
  const char* value = request->getParameter(field);
  return value && std::string_view(value) == "1";
}

// Reads and removes an upload; false when there is no memory for it.
bool takeFile(const std::string& path, std::string& text) {
  const std::int64_t size = GetFileSize(path.c_str());
  try {
    readFile(path.c_str(), text);
  } catch (const std::bad_alloc&) {
    log_log(kWebLog, kLogWarning, "malloc %ld bytes error\n", static_cast<long>(size + 1));
    removeFile(path.c_str());
    return false;
  }
  removeFile(path.c_str());
  return true;
}

std::vector<int> columnsOf(const char* choice) {
  OrbList<std::string> pieces;
  String2List(pieces, choice, ',');
  std::vector<int> columns;
  for (const std::string& piece : pieces) columns.push_back(parseInt(piece).value_or(kIgnored));
  return columns;
}

}  // namespace

int ContactsFileOperatorServlet::uploadContactCSVFile(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const bool hasTitle = isSet(request, "showtitle");
  const std::string upload = uploadedFile(request, "frameUploadCVSFile", "/tmp/CSVFile_XXXXXX");
  if (upload.empty() || GetFileSize(upload.c_str()) < 0) return refuse(response, kNoData);
  const std::string name = uploadedFileName(request, "frameUploadCVSFile");
  std::string text;
  if (!takeFile(upload, text)) return 1;
  CsvRows parsed;
  if (!parsed.parse(std::move(text))) return refuse(response, kTooManyContacts);
  const CsvRows& rows = keepRows(request, std::move(parsed));
  const std::size_t columns = rows.size() > 0 ? rows.width(0) : 0;
  TMPL_varlist* list = TMPL_add_var(nullptr, "showtitle", hasTitle ? "1" : "0", "filename", templateText(name).c_str(),
                                    "colcount", std::to_string(columns).c_str(), nullptr);
  list = TMPL_add_loop(list, "phoneoptionloop", GetContactParametersLoop(phoneType_));
  list = TMPL_add_loop(list, "cvsoptionloop", GetCVSOptionloop(columns));
  if (hasTitle) list = TMPL_add_loop(list, "titleloop", GetTitleLoop(rows));
  list = TMPL_add_loop(list, "recordloop", GetCSVContactLoop(rows, hasTitle, columns));
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-preview.htm", list);
  return 1;
}

int ContactsFileOperatorServlet::importCSV(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const bool replaces = isSet(request, "delOld");
  const char* choice = request->getParameter("arrcol");
  if (!choice) return refuse(response, kNoData);
  const CsvRows nothing;
  const CsvRows* waiting = rowsOf(request);
  const CsvRows& rows = waiting ? *waiting : nothing;
  const std::size_t first = isSet(request, "showtitle") ? 1 : 0;
  // A directory is never replaced by nothing: the rows are gone when others brought theirs since.
  if (replaces && rows.size() <= first) return refuse(response, kNoData);
  removeFile(kDirectoryFilePath);  // of an earlier export
  const std::vector<int> columns = columnsOf(choice);
  if (!columns.empty()) replaceFile(kDirectoryFilePath, contactDocument(rows, first, columns));
  const int result = operateFile(replaces ? DirectoryFile::kImportReplacing : DirectoryFile::kImportKeeping);
  if (result != 0) return refuse(response, result);
  removeFile(kDirectoryFilePath);
  response->sendRedirect("/servlet?p=contactsbasic&q=load&num=1&group=");
  return 1;
}

// Keeps the rows for this session in place of its earlier ones; the oldest of other sessions make room.
const CsvRows& ContactsFileOperatorServlet::keepRows(HttpRequest* request, CsvRows rows) {
  static unsigned long long last = 0;
  HttpSession* session = request->getSession(1);
  if (const char* known = session ? session->getAttribute(kUploadAttribute) : nullptr) {
    uploads_.remove_if([known](const Upload& upload) { return upload.session == known; });
  }
  uploads_.push_front({std::to_string(++last), std::move(rows)});
  if (session) session->setAttribute(kUploadAttribute, strdup(uploads_.front().session.c_str()));
  while (uploads_.size() > 1 && (uploads_.size() > kUploadsKept || bytesKept() > kBytesKept)) uploads_.pop_back();
  return uploads_.front().rows;
}

std::size_t ContactsFileOperatorServlet::bytesKept() const {
  std::size_t bytes = 0;
  for (const Upload& upload : uploads_) bytes += upload.rows.bytes();
  return bytes;
}

const CsvRows* ContactsFileOperatorServlet::rowsOf(HttpRequest* request) const {
  HttpSession* session = request->getSession(1);
  const char* known = session ? session->getAttribute(kUploadAttribute) : nullptr;
  const auto found = std::ranges::find(uploads_, known ? known : "", &Upload::session);
  return found != uploads_.end() ? &found->rows : nullptr;
}
