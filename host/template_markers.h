// Markers of templates ({{NAME}}, {{#NAME}}, …) as text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace host {

// The next marker from `at` on, with its braces; empty when there is none.
std::string_view nextMarker(std::string_view text, std::size_t at);

// The variable or loop that a marker is about; empty for comments and the like.
std::string_view markerName(std::string_view marker);

// The template as HTML for a parser that knows nothing of markers: between tags they are comments, which may stand
// everywhere, and among the attributes of a tag they are attributes. Nothing when it has more than `maxTags` tags.
std::optional<std::string> markersAsHtml(std::string_view text, std::size_t maxTags);

}  // namespace host
