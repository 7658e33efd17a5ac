// Texts of queries: "name=value" fields joined by "&".
#pragma once

#include <string>
#include <string_view>

// The text as a value in a query: letters, digits, "-", "_", "." and "~" as they are, every other byte as "%XX".
std::string encodeQueryValue(std::string_view text);

// A query that came in, fit for an address again: what a query may not hold (control characters, blanks, quotes, "#",
// bytes beyond ASCII, a "%" that encodes nothing) as "%XX", everything else as it is.
std::string encodeQuery(std::string_view query);

// What a browser meant: "%XX" as the byte, "+" as a blank.
std::string decodeQueryText(std::string_view text);

// True when the query holds a field of that name, however the name is written.
bool hasField(std::string_view query, std::string_view name);

// True for the name of a setting or field that holds a secret.
bool isSecretName(std::string_view name);

// The query as it may be logged: the values of secret fields are masked, credentials ("@name:password") too.
std::string withoutSecrets(std::string_view query);
