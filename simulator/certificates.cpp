#include "platform/certificates.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/phone_root.h"
#include "simulator/files.h"
#include "simulator/phone.h"
#include "simulator/text_out.h"
#include "simulator/x509.h"

namespace fs = std::filesystem;

using simulator::Certificate;
using simulator::phone;

namespace {

constexpr char kDeliveredFolder[] = "/config/certs/phoneca";
constexpr char kBuiltInServer[] = "/config/certs/phonedev/WebServer.pem";

constexpr std::uintmax_t kMaxSize = 1 << 20;  // of a certificate's file
constexpr std::size_t kNameDigits = 16;
constexpr std::size_t kMaxText = 512;
constexpr mode_t kEverybody = 0644, kOwnerAlone = 0600;

simulator::CertificateOptions options() {
  const std::lock_guard lock(phone().mutex);
  return phone().certificateOptions;
}

// Links are none.
bool isPlainFile(const fs::path& realPath) {
  std::error_code error;
  return fs::is_regular_file(fs::symlink_status(realPath, error));
}

// Empty for what is no certificate's file.
std::string contentOf(const std::string& path) {
  const std::string real = phonePath(path);
  std::error_code error;
  return isPlainFile(real) && fs::file_size(real, error) <= kMaxSize ? simulator::readFile(real).value_or("") : "";
}

struct Installed {
  std::string path;  // of the phone
  Certificate certificate;
};

using Times = std::vector<std::pair<fs::file_time_type, std::string>>;

// The folder's files in the order of their times, but for those that were being written when the phone went off.
Times filesIn(const std::string& folder) {
  Times files;
  std::error_code error, gone;
  for (fs::directory_iterator entry(phonePath(folder), error), end; !error && entry != end; entry.increment(error)) {
    const fs::path& path = entry->path();
    if (!isPlainFile(path) || path.extension() == ".new") continue;
    files.emplace_back(fs::last_write_time(path, gone), folder + path.filename().string());
  }
  std::ranges::sort(files);
  return files;
}

// The certificates of a folder in the order of their installation.
std::vector<Installed> certificatesIn(const std::string& folder) {
  std::vector<Installed> all;
  for (auto& [time, path] : filesIn(folder)) {
    if (path.size() >= sizeof TrustedCertificateInfo::path) continue;
    if (Certificate read = simulator::readCertificate(contentOf(path)))
      all.push_back({std::move(path), std::move(read)});
  }
  return all;
}

bool holds(const std::vector<Installed>& all, const Certificate& certificate) {
  return std::ranges::any_of(all, [&](const Installed& one) { return isSame(one.certificate, certificate); });
}

template <std::size_t N>
void copyText(std::string_view text, char (&field)[N]) {
  simulator::copyOut(simulator::cutUtf8(text, N - 1), field, N);
}

template <class Record>
void describe(const Certificate& certificate, Record& record) {
  copyText(simulator::shortName(X509_get_subject_name(certificate.get())), record.issuedTo);
  copyText(simulator::shortName(X509_get_issuer_name(certificate.get())), record.issuedBy);
  copyText(simulator::timeText(X509_get0_notAfter(certificate.get())), record.expiration);
}

// The order of installation is that of the files' times, whole seconds apart: so it outlasts an archive.
void setTimeBehind(const std::vector<Installed>& others, const std::string& realPath) {
  using std::chrono::seconds;
  std::error_code ignored;
  auto time = std::chrono::floor<seconds>(fs::file_time_type::clock::now());
  for (const Installed& other : others) {
    const auto taken = std::chrono::floor<seconds>(fs::last_write_time(phonePath(other.path), ignored));
    time = std::max(time, taken + seconds(1));
  }
  fs::last_write_time(realPath, time, ignored);
}

bool store(const Certificate& certificate, const std::string& folder, const std::vector<Installed>& others) {
  const std::string name = simulator::fingerprint(certificate).substr(0, kNameDigits) + ".pem";
  const std::string real = phonePath(folder + name);
  if (!simulator::replaceFile(real, simulator::pemText(certificate), kEverybody)) return false;
  setTimeBehind(others, real);
  return true;
}

std::string cut(const std::string& text) {
  return std::string(simulator::cutUtf8(text, kMaxText));
}

// "abcd" as "AB:CD".
std::string withColons(const std::string& digits) {
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && i % 2 == 0) text += ':';
    text += static_cast<char>(std::toupper(static_cast<unsigned char>(digits[i])));
  }
  return text;
}

// Whether the file is where installed certificates are: in the folder itself, or the server's.
bool isInstalledPath(const std::string& path) {
  const simulator::CertificateOptions chosen = options();
  const std::string& folder = chosen.trustedFolder;
  return path == chosen.serverCertificate ||
         (path.starts_with(folder) && path.find('/', folder.size()) == std::string::npos);
}

}  // namespace

void dl_set_option(int option, const void* value) {
  if (value == nullptr) return;
  const std::lock_guard lock(phone().mutex);
  simulator::CertificateOptions& chosen = phone().certificateOptions;
  const auto* text = static_cast<const char*>(value);
  switch (option) {
    case kTrustedFolder:
      chosen.trustedFolder = text;
      break;
    case kServerCertificate:
      chosen.serverCertificate = text;
      break;
    case kCommonNameCheck:
      chosen.commonNameCheck = *static_cast<const int*>(value);
      break;
    case kTrustedInUse:
      chosen.trustedInUse = text;
      break;
    case kServerInUse:
      chosen.serverInUse = text;
      break;
    default:
      break;
  }
}

int dl_get_ser_ca_info(ServerCertificateInfo* info) {
  if (info == nullptr) return -1;
  *info = {};
  const Certificate certificate = simulator::readFirstCertificate(contentOf(options().serverCertificate));
  if (!certificate) return -1;
  describe(certificate, *info);
  return 0;
}

int dl_get_trust_ca_info(TrustedCertificates* info) {
  if (info == nullptr) return -1;
  *info = {};
  const std::string folder = options().trustedFolder;
  std::error_code error;
  if (!fs::is_directory(phonePath(folder), error)) return -1;
  for (const Installed& one : certificatesIn(folder)) {
    if (info->count == static_cast<int>(kMaxTrustedCertificates)) break;
    TrustedCertificateInfo& record = info->records[info->count++];
    describe(one.certificate, record);
    copyText(one.path, record.path);
  }
  return 0;
}

int dl_get_ca_details(const char* file, CertificateDetails* details) {
  if (file == nullptr || details == nullptr) return -1;
  if (!isInstalledPath(file) && std::string_view(file) != kBuiltInServer) return -1;
  const std::string content = contentOf(file);
  Certificate certificate = simulator::readCertificate(content);
  if (!certificate) certificate = simulator::readFirstCertificate(content);
  if (!certificate) return -1;
  const X509* read = certificate.get();
  *details = {.issuedTo = cut(simulator::shortName(X509_get_subject_name(read))),
              .issuedBy = cut(simulator::shortName(X509_get_issuer_name(read))),
              .subject = cut(simulator::wholeName(X509_get_subject_name(read))),
              .issuer = cut(simulator::wholeName(X509_get_issuer_name(read))),
              .alternativeNames = cut(simulator::alternativeNames(certificate)),
              .serial = cut(simulator::serialNumber(certificate)),
              .fingerprint = withColons(simulator::fingerprint(certificate)),
              .beginning = simulator::timeText(X509_get0_notBefore(read)),
              .expiration = simulator::timeText(X509_get0_notAfter(read)),
              .validFrom = simulator::secondsOf(X509_get0_notBefore(read)),
              .validTo = simulator::secondsOf(X509_get0_notAfter(read))};
  return 0;
}

int dl_install_ca(const char* file) {
  const std::optional<std::string> content = file ? simulator::readFile(phonePath(file)) : std::nullopt;
  if (!content) return kTrustedFileError;
  const Certificate certificate = simulator::readCertificate(*content);
  if (!certificate) return kTrustedInstallFailed;
  if (holds(certificatesIn(std::string(kDeliveredFolder) + "/"), certificate)) return kTrustedDelivered;
  const std::string folder = options().trustedFolder;
  const std::vector<Installed> others = certificatesIn(folder);
  if (holds(others, certificate)) return kTrustedInstalledAlready;
  if (others.size() >= kMaxTrustedCertificates) return kTrustedInstallFailed;
  return store(certificate, folder, others) ? 0 : kTrustedInstallFailed;
}

int dl_install_ser_ca(const char* file) {
  const std::optional<std::string> content = file ? simulator::readFile(phonePath(file)) : std::nullopt;
  const simulator::ServerIdentity identity = simulator::readServerIdentity(content.value_or(""));
  if (identity.chain.empty()) return -1;
  if (isSame(simulator::readFirstCertificate(contentOf(kBuiltInServer)), identity.chain[0])) return kServerDelivered;
  const std::string target = options().serverCertificate;
  const std::string text = simulator::pemText(identity);
  if (pemText(simulator::readServerIdentity(contentOf(target))) == text) return kServerInstalledAlready;
  return simulator::replaceFile(phonePath(target), text, kOwnerAlone) ? 0 : -1;
}

int dl_del_ca(const char* file) {
  if (file == nullptr || !isInstalledPath(file)) return -1;
  const std::string real = phonePath(file);
  return isPlainFile(real) && ::unlink(real.c_str()) == 0 ? 0 : -1;
}
