#include "feedback/duration.h"

#include <cmath>
#include <limits>

#include "util/format.h"

namespace ostrova::feedback {
namespace {

constexpr std::int64_t DayMilliseconds = 86'400'000;
constexpr std::int64_t MostDays = std::numeric_limits<std::int64_t>::max();
constexpr double DaysPerYear = 365.25;
// 1/365.25 held in single precision: 365 days are not yet a year.
constexpr float YearsPerDay = 0.0027378509F;
constexpr std::int64_t DaysPerMonthlyYear = 365;

/// a + b, or the nearest number that 64 bits hold; the most negative one is not used, so that every
/// result can be negated.
std::int64_t Sum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) return a < 0 ? -MostDays : MostDays;
    return sum < -MostDays ? -MostDays : sum;
}

std::int64_t Negated(std::int64_t a) {
    return a < -MostDays ? MostDays : -a;
}

void Normalise(Duration& span) {
    span.days = Sum(span.days, span.milliseconds / DayMilliseconds);
    span.milliseconds %= DayMilliseconds;
    if (span.days < 0 && span.milliseconds > 0) {
        ++span.days;
        span.milliseconds -= DayMilliseconds;
    } else if (span.days > 0 && span.milliseconds < 0) {
        --span.days;
        span.milliseconds += DayMilliseconds;
    }
}

/// `value` cut to whole, one less when it is negative.
double WholePart(double value) {
    return value < 0 ? std::trunc(value) - 1 : std::trunc(value);
}

/// Writes the units of a span one after the other, with ", " between them.
class UnitList {
public:
    explicit UnitList(bool isNegative) : text_(isNegative ? "-" : ""), signSize_(text_.size()) {}

    void AddCount(std::int64_t count, std::string_view unit) {
        AddComma();
        text_ += util::Format("%I64d %s%s", count, unit, count == 1 ? "" : "s");
    }
    /// The comma belongs to the years, whether anything follows or not.
    void AddYears(std::int64_t count) {
        text_ += util::Format("%I64d year%s, ", count, count == 1 ? "" : "s");
        endsInComma_ = true;
    }
    void AddMillennia(std::int64_t count) { text_ += util::Format("%I64d millennia", count); }
    void AddSeconds(double seconds) {
        AddComma();
        text_ += util::Format("%.2f seconds", seconds);
    }
    [[nodiscard]] std::string Text() const { return text_; }

private:
    void AddComma() {
        if (text_.size() > signSize_ && !endsInComma_) text_ += ", ";
        endsInComma_ = false;
    }

    std::string text_;
    std::size_t signSize_;
    bool endsInComma_ = false;
};

/// The parts of a day that `milliseconds` hold, two units at most; `afterDays` when days stand
/// before them.
void AddTime(UnitList& list, std::int64_t milliseconds, bool afterDays) {
    const std::int64_t totalSeconds = milliseconds / 1000;
    const std::int64_t minutes = totalSeconds / 60 % 60;
    const std::int64_t hours = totalSeconds / 3600 % 24;
    if (hours > 0) list.AddCount(hours, "hour");
    if (afterDays) return;
    if (minutes > 0) list.AddCount(minutes, "minute");
    if (hours > 0) return;
    const double fraction = static_cast<double>(milliseconds % 1000) * 0.001;
    list.AddSeconds(static_cast<double>(totalSeconds % 60) + fraction);
}

}  // namespace

Duration MakeDuration(std::int64_t days, std::int64_t milliseconds) {
    Duration span{days, milliseconds};
    Normalise(span);
    return span;
}

Duration FromMilliseconds(std::int64_t milliseconds) {
    return MakeDuration(0, milliseconds);
}

Duration operator-(const Duration& a, const Duration& b) {
    return MakeDuration(Sum(a.days, Negated(b.days)), Sum(a.milliseconds, Negated(b.milliseconds)));
}

Duration& operator+=(Duration& a, const Duration& b) {
    a = MakeDuration(Sum(a.days, b.days), Sum(a.milliseconds, b.milliseconds));
    return a;
}

Duration operator/(const Duration& span, double divisor) {
    constexpr double dayLength = DayMilliseconds;
    // Nothing stays nothing, whatever it is divided by.
    const double q = span.days == 0 ? 0.0 : static_cast<double>(span.days) / divisor;
    const double r =
        span.milliseconds == 0 ? 0.0 : static_cast<double>(span.milliseconds) / divisor;
    const double wholeDays = WholePart(q) + WholePart(r * (1 / dayLength));
    if (std::isnan(wholeDays)) return {};
    if (std::abs(wholeDays) >= static_cast<double>(MostDays)) {
        return wholeDays < 0 ? MakeDuration(-MostDays, 1 - DayMilliseconds)
                             : MakeDuration(MostDays, DayMilliseconds - 1);
    }
    const double ofDays = std::round((q - WholePart(q)) * dayLength);
    const double ofRest = std::round(r - WholePart(r * (1 / dayLength)) * dayLength);
    return MakeDuration(static_cast<std::int64_t>(wholeDays),
                        static_cast<std::int64_t>(ofDays) + static_cast<std::int64_t>(ofRest));
}

std::string FormatDuration(Duration span) {
    const bool isNegative = span.days < 0 || (span.days == 0 && span.milliseconds < 0);
    if (isNegative) span = {Negated(span.days), Negated(span.milliseconds)};
    UnitList list(isNegative);
    const auto years = static_cast<std::int64_t>(static_cast<double>(span.days) * YearsPerDay);
    if (const std::int64_t millennia = years / 1000; millennia > 1) {
        list.AddMillennia(millennia);
        return list.Text();
    }
    const std::int64_t rest =
        span.days - static_cast<std::int64_t>(static_cast<double>(years) * DaysPerYear);
    const std::int64_t months = rest * 12 / DaysPerMonthlyYear;
    const std::int64_t days = rest - months * DaysPerMonthlyYear / 12;
    if (years > 0) list.AddYears(years);
    if (months > 0) list.AddCount(months, "month");
    if (years > 0) return list.Text();
    if (days > 0) list.AddCount(days, "day");
    if (months == 0) AddTime(list, span.milliseconds, days > 0);
    return list.Text();
}

}  // namespace ostrova::feedback
