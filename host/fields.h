// Named fields of a query or a form.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

inline constexpr std::size_t kMaxFieldBytes = 1024 * 1024;  // names and values of a request together
inline constexpr std::size_t kMaxFieldCount = 10'000;

enum class FieldResult {
  kOk,
  kNul,       // a name or value holds a NUL, which text between host and handlers cannot carry
  kTooLarge,  // more than kMaxFieldBytes or kMaxFieldCount
};

// Fields in the order they came, repeated names included. Their texts stay where they are until the object ends.
class Fields {
 public:
  struct Field {
    std::string name;
    std::vector<std::string> values;  // one text; for a stored file its path and the name that the browser sent
  };

  // Adds a field unless its result is an error; then it stays out.
  FieldResult add(std::string name, std::string value);
  FieldResult addFile(std::string name, std::string path, std::string browserName);

  // The first field's first text; null when there is no such field.
  const std::string* first(std::string_view name) const;
  const std::vector<Field>& all() const { return fields_; }
  bool empty() const { return fields_.empty(); }

 private:
  FieldResult add(Field field);

  std::vector<Field> fields_;
  std::size_t bytes_ = 0;
};

// Takes %XX off; what is no valid %XX stays as it is.
std::string percentDecode(std::string_view text, bool plusIsBlank);

// Adds the fields of "a=1&b=2" to `fields`; stops at the first error.
FieldResult parseUrlEncoded(std::string_view text, Fields& fields);

}  // namespace host
