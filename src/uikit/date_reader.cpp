#include "uikit/date_reader.h"

#include <array>
#include <chrono>
#include <cstddef>

#include "util/ascii.h"
#include "util/compare.h"
#include "util/local_time.h"
#include "util/text.h"

namespace ostrova::uikit {
namespace {

constexpr int SecondsPerMinute = 60;
constexpr int SecondsPerHour = 3600;
constexpr int SecondsPerDay = 86400;

struct Number {
    int value = 0;
    std::size_t digits = 0;
};

/// One reading of one text, token by token; a method that answers false ends it.
class Reading {
public:
    Reading(std::string_view text, DateOrder order) : rest_(text), order_(order) {}

    std::optional<DateValue> Read() {
        for (SkipGaps(); !rest_.empty(); SkipGaps()) {
            const bool understood = util::IsAsciiDigit(rest_.front()) ? ReadFigures() : ReadWord();
            if (!understood) return std::nullopt;
        }
        return Result();
    }

private:
    void SkipGaps() {
        while (!rest_.empty() && (util::IsAsciiSpace(rest_.front()) || rest_.front() == ',')) {
            rest_.remove_prefix(1);
        }
    }

    /// The number at the front; nothing when there is none or it is too long for any date.
    std::optional<Number> TakeNumber() {
        const std::size_t digits = util::SkipDigits(rest_);
        if (digits == 0 || digits > 4) return std::nullopt;
        const Number number{util::LeadingNumber(rest_.substr(0, digits)), digits};
        rest_.remove_prefix(digits);
        return number;
    }

    bool Take(char expected) {
        if (rest_.empty() || rest_.front() != expected) return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool ReadFigures() {
        const auto first = TakeNumber();
        if (!first) return false;
        if (Take(':')) return ReadTime(*first);
        for (const char separator : {'/', '-', '.'}) {
            if (Take(separator)) return ReadFigureDate(*first, separator);
        }
        if (loneCount_ == lone_.size()) return false;
        lone_[loneCount_++] = *first;
        return true;
    }

    bool ReadTime(Number hour) {
        const auto minute = TakeNumber();
        if (seconds_ || !minute || hour.value > 23 || minute->value > 59) return false;
        seconds_ = hour.value * SecondsPerHour + minute->value * SecondsPerMinute;
        if (!Take(':')) return true;
        const auto second = TakeNumber();
        if (!second || second->value > 59) return false;
        *seconds_ += second->value;
        return true;
    }

    bool ReadFigureDate(Number first, char separator) {
        const auto second = TakeNumber();
        if (day_ || !second || !Take(separator)) return false;
        const auto third = TakeNumber();
        if (!third) return false;
        if (first.digits == 4) return SetDate(first, second->value, third->value);
        if (order_ == DateOrder::DayFirst) return SetDate(*third, second->value, first.value);
        return SetDate(*third, first.value, second->value);
    }

    bool ReadWord() {
        std::size_t length = 0;
        while (length < rest_.size() && util::IsAsciiLetter(rest_[length])) ++length;
        const std::string_view word = rest_.substr(0, length);
        rest_.remove_prefix(length);
        if (util::CompareNoCase(word, "am") == 0) return ApplyHalf(0);
        if (util::CompareNoCase(word, "pm") == 0) return ApplyHalf(12);
        if (util::CompareNoCase(word, "t") == 0) return day_.has_value();  // "2005-04-03T21:05"
        for (int month = 0; month < 12 && month_ == 0; ++month) {
            if (IsShortFor(word, util::MonthName(month))) {
                month_ = month + 1;
                return true;
            }
        }
        for (const std::string_view day :
             {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"}) {
            if (IsShortFor(word, day)) return true;
        }
        return false;
    }

    static bool IsShortFor(std::string_view word, std::string_view name) {
        return word.size() >= 3 && util::StartsWithNoCase(name, word) == 0;
    }

    bool ApplyHalf(int hours) {
        if (!seconds_) return false;
        const int hour = *seconds_ / SecondsPerHour;
        if (hour < 1 || hour > 12) return false;
        *seconds_ += (hours + hour % 12 - hour) * SecondsPerHour;
        return true;
    }

    bool SetDate(Number year, int month, int day) {
        using namespace std::chrono;
        int fullYear = year.value;
        if (year.digits <= 2) fullYear += fullYear < 30 ? 2000 : 1900;
        const year_month_day date{std::chrono::year(fullYear),
                                  std::chrono::month(static_cast<unsigned>(month)),
                                  std::chrono::day(static_cast<unsigned>(day))};
        if (!date.ok()) return false;
        day_ = (sys_days(date) - sys_days(1899y / December / 30)).count();
        return true;
    }

    std::optional<DateValue> Result() {
        if (month_ != 0) {
            // "3 April 2005" or "April 3, 2005": the day comes before the year either way.
            if (day_ || loneCount_ != 2 || !SetDate(lone_[1], month_, lone_[0].value)) {
                return std::nullopt;
            }
        } else if (loneCount_ != 0) {
            return std::nullopt;
        }
        if (!day_ && !seconds_) return std::nullopt;
        return day_.value_or(0) * SecondsPerDay + seconds_.value_or(0);
    }

    std::string_view rest_;
    DateOrder order_;
    int month_ = 0;  ///< given by its name; 0 when not
    std::array<Number, 2> lone_{};
    std::size_t loneCount_ = 0;
    std::optional<DateValue> day_;
    std::optional<int> seconds_;
};

}  // namespace

std::optional<DateValue> ReadDateTime(std::string_view text, DateOrder order) {
    return Reading(text, order).Read();
}

}  // namespace ostrova::uikit
