#ifndef COMMONS_TEXTPLACES_H
#define COMMONS_TEXTPLACES_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <environment/Export.h>

namespace Commons {

// Rows and columns of the bytes of a text, as an editor shows them: both from 1. Rows are parted by line feeds. Columns
// count code points; a byte order mark at the beginning of the text has no column, and each byte that is no UTF-8 has
// one of its own. Positions are byte offsets; one after the end counts as the end.
class TAVREL_ENVIRONMENT_API TextPlaces {
public:
    struct Place {
        std::uint32_t row = 1;
        std::uint32_t column = 1;
        bool operator==(const Place&) const = default;
    };

    // The text is borrowed and must outlive this object.
    explicit TextPlaces(std::string_view text);

    Place PlaceOf(std::size_t position) const;
    // The byte of that place; the end of the line for a column after it, and of the text for a row after it.
    std::size_t PositionOf(const Place& place) const;
    // The row without its line end (a carriage return before the line feed belongs to that) and without a byte order
    // mark; empty for a row that is not there.
    std::string_view Line(std::uint32_t row) const;
    std::uint32_t RowCount() const { return static_cast<std::uint32_t>(starts.size()); }

    // The length in bytes of the character at `position`, 1 for a byte that is no UTF-8; 0 at the end.
    static std::size_t CharacterLength(std::string_view text, std::size_t position);

private:
    std::string_view text;
    std::vector<std::size_t> starts; // of the rows
};

} // namespace Commons

#endif
