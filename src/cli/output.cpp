#include "cli/output.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "util/code_page.h"

namespace ostrova::cli {
namespace {

std::string ToText(const Field& field) {
    if (const auto* text = std::get_if<std::string>(&field.value)) return *text;
    if (const auto* number = std::get_if<std::int64_t>(&field.value)) {
        return std::to_string(*number);
    }
    if (const auto* flag = std::get_if<bool>(&field.value)) return *flag ? "true" : "false";
    return {};
}

bool LooksLikeFormula(std::string_view field) {
    return !field.empty() && std::string_view("=+-@\t\r").find(field[0]) != std::string_view::npos;
}

nlohmann::ordered_json ToJson(const Record& record) {
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (const Field& field : record) {
        std::visit([&](const auto& value) { object[field.name] = value; }, field.value);
    }
    return object;
}

}  // namespace

std::string CsvField(std::string_view field, bool isSafe) {
    std::string text(field);
    if (isSafe && LooksLikeFormula(text)) text.insert(text.begin(), '\'');
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

void Output::Line(std::string_view utf8) {
    *streams_.out << util::ForTerminal(utf8) << '\n';
}

void Output::BoldLine(std::string_view utf8) {
    if (streams_.colour) {
        *streams_.out << "\x1b[1m" << util::ForTerminal(utf8) << "\x1b[0m\n";
    } else {
        Line(utf8);
    }
}

void Output::JsonLine(const nlohmann::ordered_json& object) {
    *streams_.out << object.dump(-1, ' ', /*ensure_ascii=*/true,
                                 nlohmann::ordered_json::error_handler_t::replace)
                  << '\n';
}

void Output::Header(const Record& record) {
    if (format_ != OutputFormat::Csv) return;
    std::vector<std::string> names;
    for (const Field& field : record) names.emplace_back(field.name);
    PutRow(names);
}

void Output::Put(const Record& record) {
    if (format_ == OutputFormat::Json) {
        JsonLine(ToJson(record));
        return;
    }
    std::vector<std::string> fields;
    for (const Field& field : record) {
        // A file gets the data as it is; a terminal must not be steered by it.
        std::string text = ToText(field);
        fields.push_back(streams_.outIsTerminal ? util::ForTerminal(text) : std::move(text));
    }
    PutRow(fields);
}

void Output::PutRow(const std::vector<std::string>& fields) {
    std::string row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) row += ',';
        row += CsvField(fields[i], csvIsSafe_);
    }
    *streams_.out << row << "\r\n";
}

bool Output::IsBroken() const {
    return !streams_.out->good();
}

}  // namespace ostrova::cli
