#include "tests/support/certificates.h"

#include <cstdlib>
#include <stdexcept>

#include "tests/support/phone_test.h"

namespace {

constexpr char kScript[] = R"(
make() { openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -noenc -keyout "$1.key" -out "$1.pem" "${@:2}"; }
for i in {0..10}; do make a$i -days 40 -subj "/O=Example/CN=Authority $i"; done
openssl x509 -in a0.pem -outform DER -out a0.der
make root -subj /CN=Root
make mid -subj /CN=Middle -CA root.pem -CAkey root.key
make leaf -subj /O=Example/CN=phone.example -CA mid.pem -CAkey mid.key \
  -addext 'subjectAltName=DNS:phone.example,IP:192.0.2.1' -addext basicConstraints=CA:FALSE -set_serial 0x1234
openssl ec -in leaf.key -out ec.key
openssl ec -in leaf.key -aes128 -passout pass:secret -out old.key
openssl pkcs8 -topk8 -in leaf.key -passout pass:secret -out pkcs8.key
make odd -utf8 -subj $'/O=A\x01\n\u00e4 &amp; B'
)";

}  // namespace

std::string certificateFile(const std::string& name) {
  static const TemporaryFolder folder;
  static const bool isMade = [] {
    folder.write("make.sh", kScript);
    return std::system(("cd " + folder.path().string() + " && LC_ALL=C.UTF-8 bash -e make.sh >log 2>&1").c_str()) == 0;
  }();
  if (!isMade) throw std::runtime_error(folder.content("log"));
  return folder.content(name);
}
