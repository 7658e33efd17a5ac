// The page "contacts-preview": the local directory in and out as files.
#pragma once

#include <list>
#include <string>

#include "framework/servlet_base.h"
#include "platform/phone_application.h"
#include "servlet/contacts/contacts_csv.h"

class ContactsFileOperatorServlet : public HttpServlet {
 public:
  int init() override;
  int onRequest(HttpRequest* request, HttpResponse* response) override;
  int destory() override;

  // Writes the notice for the phone application's answer to a file operation; nothing for a success.
  static void SetUploadErrorNotice(std::string& text, int code);

 private:
  // The rows of a CSV file wait for their import by the session that brought them.
  struct Upload {
    std::string session;
    CsvRows rows;
  };

  // Has the phone application read or write the exchange file: 0, or why it did not.
  static int operateFile(DirectoryFile operation);
  // Answers with a notice, or with that of a file operation.
  static int refuse(HttpResponse* response, const char* notice);
  static int refuse(HttpResponse* response, int code);
  static void sendAsFile(HttpResponse* response, const char* type, const char* disposition);

  int downloadContactXMLFile(HttpRequest* request, HttpResponse* response);
  int uploadContactXMLFile(HttpRequest* request, HttpResponse* response);
  int downloadContactCSVFile(HttpRequest* request, HttpResponse* response);  // contacts_preview_export.cpp

  // contacts_preview_import.cpp
  int uploadContactCSVFile(HttpRequest* request, HttpResponse* response);
  int importCSV(HttpRequest* request, HttpResponse* response);
  const CsvRows& keepRows(HttpRequest* request, CsvRows rows);
  const CsvRows* rowsOf(HttpRequest* request) const;
  std::size_t bytesKept() const;
  void DeleteCSVDate() { uploads_.clear(); }

  std::list<Upload> uploads_;  // the latest first
  int phoneType_ = 0;
};
