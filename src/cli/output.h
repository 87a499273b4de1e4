#pragma once

// Standard output: plain text for people, one JSON object a line or comma-separated values for
// programs.

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/world.h"

namespace ostrova::cli {

enum class OutputFormat { Text, Json, Csv };

/// What a record can hold: texts are UTF-8, `nullptr` is "there is none".
using FieldValue = std::variant<std::nullptr_t, bool, std::int64_t, std::string>;

/// A named value of a record.
struct Field {
    const char* name;
    FieldValue value;
};

using Record = std::vector<Field>;

/// `field` as comma-separated values have it: quoted when it holds a comma, a quote or a line
/// break. `isSafe` puts an apostrophe before what a spreadsheet would take for a formula.
[[nodiscard]] std::string CsvField(std::string_view field, bool isSafe);

/// Borrows the streams; used by one thread.
class Output {
public:
    Output(const Streams& streams, OutputFormat format, bool csvIsSafe)
        : streams_(streams), format_(format), csvIsSafe_(csvIsSafe) {}

    [[nodiscard]] OutputFormat Format() const { return format_; }
    [[nodiscard]] bool IsText() const { return format_ == OutputFormat::Text; }

    /// One line of text, cleaned of what steers a terminal.
    void Line(std::string_view utf8);
    /// The same in bold, where colour is welcome.
    void BoldLine(std::string_view utf8);

    /// An object as one line of JSON, ASCII only, whatever bytes its texts hold.
    void JsonLine(const nlohmann::ordered_json& object);

    /// With comma-separated values, the names of the record's fields as the first row.
    void Header(const Record& record);
    /// A record as JSON or as comma-separated values.
    void Put(const Record& record);

    /// True when what was written can't arrive: nobody reads it, or there is no room.
    [[nodiscard]] bool IsBroken() const;

private:
    void PutRow(const std::vector<std::string>& fields);

    const Streams& streams_;
    OutputFormat format_;
    bool csvIsSafe_;
};

}  // namespace ostrova::cli
