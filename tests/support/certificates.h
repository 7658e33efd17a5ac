// Certificates for tests, made with the openssl command once for each test program.
#pragma once

#include <string>

// The content of one of these files:
//   a0.pem to a10.pem, a0.der, a0.key: authorities "Authority N", valid for 40 days from now; key of the first
//   root.pem, mid.pem, leaf.pem, leaf.key: a chain, the leaf for "phone.example"; ec.key: its key as older tools write
//   it pkcs8.key, old.key: the leaf's key with a pass phrase, in both notations odd.pem: names with control characters,
//   without a common name
std::string certificateFile(const std::string& name);
