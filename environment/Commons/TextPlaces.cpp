#include <Commons/TextPlaces.h>

#include <algorithm>

#include "Utf8.h"

namespace Commons {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

} // namespace

TextPlaces::TextPlaces(std::string_view wholeText) : text(wholeText) {
    starts.push_back(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
    for (std::size_t feed = text.find('\n'); feed != std::string_view::npos; feed = text.find('\n', feed + 1))
        starts.push_back(feed + 1);
}

std::size_t TextPlaces::CharacterLength(std::string_view text, std::size_t position) {
    if (position >= text.size()) return 0;
    return std::max<std::size_t>(detail::Utf8SequenceLength(text, position), 1);
}

TextPlaces::Place TextPlaces::PlaceOf(std::size_t position) const {
    position = std::min(position, text.size());
    const auto after = std::upper_bound(starts.begin() + 1, starts.end(), position);
    Place place;
    place.row = static_cast<std::uint32_t>(after - starts.begin());
    for (std::size_t at = after[-1]; at < position; at += CharacterLength(text, at)) ++place.column;
    return place;
}

std::size_t TextPlaces::PositionOf(const Place& place) const {
    if (place.row == 0 || place.row > starts.size()) return text.size();
    std::size_t at = starts[place.row - 1];
    const std::size_t end = at + Line(place.row).size();
    for (std::uint32_t column = 1; column < place.column && at < end; ++column) at += CharacterLength(text, at);
    return std::min(at, end);
}

std::string_view TextPlaces::Line(std::uint32_t row) const {
    if (row == 0 || row > starts.size()) return {};
    const std::size_t begin = starts[row - 1];
    std::size_t end = row < starts.size() ? starts[row] - 1 : text.size();
    if (row < starts.size() && end > begin && text[end - 1] == '\r') --end;
    return text.substr(begin, end - begin);
}

} // namespace Commons
