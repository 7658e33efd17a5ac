#include "host/template_texts.h"

#include <gumbo.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <sstream>

#include "host/fields.h"

namespace host {
namespace {
using Node = GumboNode;

bool isElement(const Node& node) {
  return node.type == GUMBO_NODE_ELEMENT || node.type == GUMBO_NODE_TEMPLATE;
}

bool is(const Node& node, GumboTag tag) {
  return isElement(node) && node.v.element.tag == tag;
}

// Empty when it is not there.
std::string_view attribute(const Node& node, const char* name) {
  if (!isElement(node)) return {};
  const GumboAttribute* found = gumbo_get_attribute(&node.v.element.attributes, name);
  return found ? found->value : std::string_view();
}

bool hasClass(const Node& node, std::string_view name) {
  std::string_view classes = attribute(node, "class");
  while (!classes.empty()) {
    const std::string_view one = classes.substr(0, classes.find(' '));
    if (one == name) return true;
    classes.remove_prefix(std::min(one.size() + 1, classes.size()));
  }
  return false;
}

bool isWhole(std::string_view text) {
  return !text.empty() && text.find("{{") == std::string_view::npos;
}

std::vector<const Node*> childrenOf(const Node& node) {
  const GumboVector* all = isElement(node)                    ? &node.v.element.children
                           : node.type == GUMBO_NODE_DOCUMENT ? &node.v.document.children
                                                              : nullptr;
  std::vector<const Node*> children;
  for (unsigned i = 0; all && i < all->length; ++i) children.push_back(static_cast<const Node*>(all->data[i]));
  return children;
}

// The first node of `root` and all below it, as they stand, of which `fits` is true; null when there is none.
template <class Fits>
const Node* search(const Node& root, const Fits& fits) {
  std::vector<const Node*> open{&root};
  while (!open.empty()) {
    const Node& node = *open.back();
    open.pop_back();
    if (fits(node)) return &node;
    const std::vector<const Node*> children = childrenOf(node);
    open.insert(open.end(), children.rbegin(), children.rend());
  }
  return nullptr;
}

// The same without the root itself.
template <class Fits>
const Node* find(const Node& root, const Fits& fits) {
  return search(root, [&](const Node& node) { return &node != &root && fits(node); });
}

template <class Visit>
void walk(const Node& root, const Visit& visit) {
  search(root, [&](const Node& node) {
    visit(node);
    return false;
  });
}

// What stands in a node, with single blanks; empty for null.
std::string textOf(const Node* root) {
  std::string whole, tidy;
  if (!root) return tidy;
  walk(*root, [&](const Node& node) {
    if (node.type == GUMBO_NODE_TEXT || node.type == GUMBO_NODE_WHITESPACE) whole += node.v.text.text;
  });
  std::istringstream words(whole);
  for (std::string word; words >> word;) tidy.append(tidy.empty() ? "" : " ").append(word);
  return tidy;
}

bool isControl(const Node& node) {
  if (is(node, GUMBO_TAG_INPUT)) return attribute(node, "type") != "hidden";
  return is(node, GUMBO_TAG_SELECT) || is(node, GUMBO_TAG_TEXTAREA);
}

bool isLabel(const Node& node) {
  return is(node, GUMBO_TAG_LABEL) || hasClass(node, "label");
}

// The parser knows no dialogs.
bool isDialog(const Node& node) {
  if (!is(node, GUMBO_TAG_UNKNOWN)) return false;
  const GumboStringPiece& tag = node.v.element.original_tag;
  return std::string_view(tag.data, tag.length).starts_with("<dialog");
}

// What is not there before the reader does something, and forms that only choose what the page shows.
bool isAside(const Node& node) {
  return isDialog(node) || (is(node, GUMBO_TAG_FORM) && attribute(node, "method") != "post");
}

// True for what stands in place of something that is missing.
bool isStandIn(const Node& node) {
  const std::vector<const Node*> siblings = childrenOf(*node.parent);
  const Node* before = nullptr;
  for (const Node* sibling : siblings) {
    if (sibling == &node) break;
    if (sibling->type != GUMBO_NODE_WHITESPACE) before = sibling;
  }
  return before && before->type == GUMBO_NODE_COMMENT && std::string_view(before->v.text.text).ends_with("_off}}");
}

bool isHelp(const Node& node) {
  return hasClass(node, "help") && !isStandIn(node);
}

class TextReader {
 public:
  explicit TextReader(const Node& document) : document_(document) {}

  TemplateTexts read() {
    walk(document_, [&](const Node& node) { noteId(node); });
    walk(document_, [&](const Node& node) { note(node); });
    return std::move(texts_);
  }

 private:
  void noteId(const Node& node) {
    if (const std::string_view id = attribute(node, "id"); !id.empty()) ids_.emplace(id, &node);
  }

  void note(const Node& node) {
    if (is(node, GUMBO_TAG_TITLE) && texts_.title.empty()) texts_.title = textOf(&node);
    if (is(node, GUMBO_TAG_H1) && texts_.heading.empty()) texts_.heading = textOf(&node);
    if (hasClass(node, "lead") && texts_.lead.empty()) texts_.lead = textOf(&node);
    if (is(node, GUMBO_TAG_A)) noteLink(node);
    if (hasClass(node, "field")) noteField(node);
    if (is(node, GUMBO_TAG_DT)) noteValue(node);
    if (hasClass(node, "card")) noteCard(node);
  }

  void noteLink(const Node& node) {
    const std::string_view address = attribute(node, "href");
    const std::size_t query = address.find('?');
    Fields fields;
    if (!isWhole(address) || query == std::string_view::npos) return;
    parseUrlEncoded(address.substr(query + 1), fields);
    const std::string *page = fields.first("p"), *action = fields.first("q");
    if (!page || !action || *action != "load") return;
    texts_.links.push_back({*page, std::string(address), around(node).keys});
  }

  void noteField(const Node& node) {
    const Node* control = find(node, isControl);
    std::string_view anchor = control ? attribute(*control, "id") : "";
    if (!isWhole(anchor) && control) anchor = attribute(*control, "name");
    if (!isWhole(anchor)) anchor = attribute(node, "id");
    add(node, anchor, textOf(find(node, isLabel)), textOf(find(node, isHelp)));
  }

  void noteValue(const Node& node) {
    const Node* value = find(*node.parent, [](const Node& one) { return is(one, GUMBO_TAG_DD); });
    add(node, value ? attribute(*value, "data-var") : "", textOf(&node), textOf(value));
  }

  // A card whose settings are neither fields nor values is found as a whole.
  void noteCard(const Node& node) {
    const Node* title = find(node, [](const Node& one) { return is(one, GUMBO_TAG_H2); });
    const auto isSetting = [](const Node& one) { return hasClass(one, "field") || is(one, GUMBO_TAG_DT); };
    if (find(node, isSetting) || isStandIn(node)) return;
    add(node, attribute(node, "id"), textOf(title), textOf(find(node, isHelp)));
  }

  void add(const Node& node, std::string_view anchor, std::string label, std::string help) {
    Surroundings surroundings = around(node);
    if (label.empty() || surroundings.isAside) return;
    std::erase(surroundings.headings, label);
    texts_.settings.push_back({isWhole(anchor) ? std::string(anchor) : "", std::move(label), std::move(help),
                               std::move(surroundings.headings), std::move(surroundings.keys)});
  }

  struct Surroundings {
    Keys keys;
    std::vector<std::string> headings;
    bool isAside = false;
  };

  // The node's own key counts, its own headings do not.
  Surroundings around(const Node& node) const {
    Surroundings all;
    for (const Node *one = &node, *below = nullptr; one; below = one, one = one->parent) {
      all.isAside |= isAside(*one);
      if (const auto key = attribute(*one, "data-level"); !key.empty()) all.keys.emplace_back(key);
      if (std::string title = below ? headingOf(*one, *below) : ""; !title.empty()) {
        all.headings.push_back(std::move(title));
      }
    }
    std::reverse(all.headings.begin(), all.headings.end());
    return all;
  }

  // What stands above `below` in `node`, a card or a group.
  std::string headingOf(const Node& node, const Node& below) const {
    if (const auto label = ids_.find(attribute(node, "aria-labelledby")); label != ids_.end()) {
      return textOf(label->second);
    }
    const Node* last = nullptr;
    for (const Node* child : childrenOf(node)) {
      if (child == &below) break;
      if (is(*child, GUMBO_TAG_H2) || is(*child, GUMBO_TAG_H3)) last = child;
    }
    return textOf(last);
  }

  const Node& document_;
  std::map<std::string_view, const Node*> ids_;
  TemplateTexts texts_;
};
}  // namespace

TemplateTexts readTexts(const GumboInternalNode& document) {
  return TextReader(document).read();
}

}  // namespace host
