// Objects as tables of members: what is shown, what may be patched, and what null brings back.
#pragma once

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

#include "simulator/state/json_values.h"

namespace simulator {

template <class Object>
struct Member {
  const char* name;
  nlohmann::ordered_json (*show)(const Object& object);
  // `fresh` is what a null inside the value brings back; without it there is nothing to bring back.
  Error (*merge)(const nlohmann::json& value, const std::string& path, Object& object, const Object* fresh);
  void (*reset)(Object& object, const Object& fresh);
};

template <class Members, class Object>
nlohmann::ordered_json showMembers(const Members& members, const Object& object) {
  auto result = nlohmann::ordered_json::object();
  for (const auto& member : members) result[member.name] = member.show(object);
  return result;
}

// Merges an object member by member; a null brings back what `fresh` has, and is a wrong type without it. The first
// error ends it; `object` then holds a part of the changes. `path` is empty for the outermost object.
template <class Members, class Object>
Error mergeMembers(const nlohmann::json& value, const std::string& path, const Members& members, Object& object,
                   const Object* fresh) {
  if (!value.is_object()) return wrongType(path, "an object");
  for (const auto& [key, given] : value.items()) {
    const std::string name = path.empty() ? key : path + "." + key;
    const auto member = std::find_if(std::begin(members), std::end(members),
                                     [&key = key](const auto& candidate) { return candidate.name == key; });
    if (member == std::end(members)) return unknown(name);
    if (given.is_null() && fresh != nullptr) {
      member->reset(object, *fresh);
    } else if (Error error = member->merge(given, name, object, fresh)) {
      return error;
    }
  }
  return {};
}

// What a pointer to a field points to, and in which class.
template <class Pointer>
struct PointedField;
template <class Object, class Field>
struct PointedField<Field Object::*> {
  using Owner = Object;
  using Type = Field;
};
template <auto kField>
using Owner = typename PointedField<decltype(kField)>::Owner;
template <auto kField>
using FieldType = typename PointedField<decltype(kField)>::Type;

template <auto kField>
void resetField(Owner<kField>& object, const Owner<kField>& fresh) {
  object.*kField = fresh.*kField;
}

// A member that is one field, read by `kRead`.
template <auto kField, auto kRead>
constexpr Member<Owner<kField>> field(const char* name) {
  using Object = Owner<kField>;
  return {name, [](const Object& object) { return nlohmann::ordered_json(object.*kField); },
          [](const nlohmann::json& value, const std::string& path, Object& object, const Object*) {
            return kRead(value, path, object.*kField);
          },
          resetField<kField>};
}

// A member that is shown only. A patch may hold it as it is, so that a state can be given back whole.
template <auto kField>
constexpr Member<Owner<kField>> shown(const char* name) {
  using Object = Owner<kField>;
  return {name, [](const Object& object) { return nlohmann::ordered_json(object.*kField); },
          [](const nlohmann::json& value, const std::string& path, Object& object, const Object*) {
            return value == nlohmann::json(object.*kField) ? Error() : wrongType(path, "left as it is");
          },
          [](Object&, const Object&) {}};
}

// A member that is an object with the members `kMembers`.
template <auto kField, const auto& kMembers>
constexpr Member<Owner<kField>> object(const char* name) {
  using Object = Owner<kField>;
  return {name, [](const Object& outer) { return showMembers(kMembers, outer.*kField); },
          [](const nlohmann::json& value, const std::string& path, Object& outer, const Object* fresh) {
            return mergeMembers(value, path, kMembers, outer.*kField, fresh != nullptr ? &(fresh->*kField) : nullptr);
          },
          [](Object& outer, const Object& fresh) {
            for (const auto& member : kMembers) member.reset(outer.*kField, fresh.*kField);
          }};
}

template <const auto& kMembers, class Item>
Error readItem(const nlohmann::json& value, const std::string& path, Item& item) {
  return mergeMembers<decltype(kMembers), Item>(value, path, kMembers, item, nullptr);
}

// A member that is a list of at most `kMost` objects with the members `kMembers`, replaced as a whole.
template <auto kField, const auto& kMembers, std::size_t kMost>
constexpr Member<Owner<kField>> objectList(const char* name) {
  using Object = Owner<kField>;
  using Item = typename FieldType<kField>::value_type;
  return {name,
          [](const Object& outer) {
            auto list = nlohmann::ordered_json::array();
            for (const auto& item : outer.*kField) list.push_back(showMembers(kMembers, item));
            return list;
          },
          [](const nlohmann::json& value, const std::string& path, Object& outer, const Object*) {
            return readList(value, path, outer.*kField, kMost, "objects", readItem<kMembers, Item>);
          },
          resetField<kField>};
}

}  // namespace simulator
