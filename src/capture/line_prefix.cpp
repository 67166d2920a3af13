#include "capture/line_prefix.h"

#include <algorithm>
#include <utility>

#include "capture/hexadecimal.h"
#include "import/text/names.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr std::string_view kGaps = " \t,;";

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes from `least` to `most` digits off the front; nothing, and nothing taken, when there are fewer.
std::optional<std::uint32_t> TakeDigits(std::string_view& text, std::size_t least, std::size_t most) {
    const auto end = std::find_if_not(
        text.begin(), text.begin() + static_cast<std::ptrdiff_t>(std::min(most, text.size())), IsDigit);
    const auto count = static_cast<std::size_t>(end - text.begin());
    const auto value = count < least ? std::nullopt : DigitsOf(text.substr(0, count), 10);
    text.remove_prefix(value ? count : 0);
    return value;
}

bool TakeOne(std::string_view& text, std::string_view characters) {
    const bool isThere = !text.empty() && characters.find(text.front()) != std::string_view::npos;
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// A fraction of any length, with its point or comma; 0 when there is none.
double TakeFraction(std::string_view& text) {
    double unit = 1;
    double fraction = 0;
    std::string_view rest = text;
    if (!TakeOne(rest, ".,") || rest.empty() || !IsDigit(rest.front())) {
        return 0;
    }
    for (; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1)) {
        unit /= 10;
        fraction += unit * (rest.front() - '0');
    }
    text = rest;
    return fraction;
}

constexpr double kSecondsPerMinute = 60;
constexpr double kSecondsPerHour = 3600;
constexpr double kSecondsPerDay = 86400;

/// "12:34:56.789", without seconds too. Nothing is taken unless it is one.
std::optional<double> TakeTimeOfDay(std::string_view& text) {
    std::string_view rest = text;
    const auto hours = TakeDigits(rest, 1, 2);
    if (!hours || !TakeOne(rest, ":")) {
        return std::nullopt;
    }
    const auto minutes = TakeDigits(rest, 2, 2);
    if (!minutes) {
        return std::nullopt;
    }
    double seconds = *hours * kSecondsPerHour + *minutes * kSecondsPerMinute;
    if (TakeOne(rest, ":")) {
        const auto whole = TakeDigits(rest, 2, 2);
        if (!whole) {
            return std::nullopt;
        }
        seconds += *whole + TakeFraction(rest);
    }
    text = rest;
    return seconds;
}

/// Days from some day on, in order.
double DaysOf(std::uint32_t year, std::uint32_t month, std::uint32_t day) {
    constexpr std::uint32_t kFirstMonth = 3;  // years that begin in March have their odd day at the end
    const std::uint32_t y = month < kFirstMonth ? year - 1 : year;
    const std::uint32_t m = month < kFirstMonth ? month + 9 : month - kFirstMonth;
    const std::uint32_t days = 365 * y + y / 4 - y / 100 + y / 400 + (153 * m + 2) / 5 + day;
    return days;
}

/// "2024-06-03" or "03.06.2024", as days.
std::optional<double> TakeDate(std::string_view& text) {
    std::string_view rest = text;
    const auto first = TakeDigits(rest, 1, 4);
    const char mark = rest.empty() ? '\0' : rest.front();
    if (!first || !TakeOne(rest, "-/.")) {
        return std::nullopt;
    }
    const auto month = TakeDigits(rest, 1, 2);
    if (!month || !TakeOne(rest, std::string_view(&mark, 1))) {
        return std::nullopt;
    }
    const bool isYearFirst = *first > 31;
    const auto last = TakeDigits(rest, isYearFirst ? 1 : 4, isYearFirst ? 2 : 4);
    if (!last || *month < 1 || *month > 12) {
        return std::nullopt;
    }
    text = rest;
    return isYearFirst ? DaysOf(*first, *month, *last) : DaysOf(*last, *month, *first);
}

/// "Z", "+02:00", "+0200" or "+02", in seconds to be taken off.
double TakeZone(std::string_view& text) {
    if (TakeOne(text, "Zz")) {
        return 0;
    }
    std::string_view rest = text;
    const double sign = rest.starts_with('-') ? -1 : 1;
    if (!TakeOne(rest, "+-")) {
        return 0;
    }
    const auto hours = TakeDigits(rest, 2, 2);
    const bool hasColon = TakeOne(rest, ":");
    const auto minutes = TakeDigits(rest, 2, 2);
    if (!hours || (hasColon && !minutes)) {
        return 0;
    }
    text = rest;
    return sign * (*hours * kSecondsPerHour + minutes.value_or(0) * kSecondsPerMinute);
}

/// What a plain number counts in whose whole part has so many digits.
double UsualUnit(std::size_t digits) {
    constexpr std::size_t kMilli = 11;
    constexpr std::size_t kMicro = 14;
    constexpr std::size_t kNano = 17;
    return digits < kMilli ? 1 : digits < kMicro ? 1e-3 : digits < kNano ? 1e-6 : 1e-9;
}

/// "12.5", "7".
std::optional<double> SecondsIn(std::string_view text, double unit) {
    constexpr std::size_t kLongest = 40;
    if (text.empty() || !IsDigit(text.front()) || text.size() > kLongest) {
        return std::nullopt;
    }
    double count = 0;
    std::size_t digits = 0;
    for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1), ++digits) {
        count = 10 * count + (text.front() - '0');
    }
    count += TakeFraction(text);
    return text.empty() ? std::optional(count * (unit > 0 ? unit : UsualUnit(digits))) : std::nullopt;
}

/// A token that stands in brackets, or has a colon behind it.
std::string_view WithoutMarks(std::string_view token) {
    if (token.size() > 2 && token.starts_with('[') && token.ends_with(']')) {
        token = token.substr(1, token.size() - 2);
    }
    return token.size() > 1 && token.ends_with(':') ? token.substr(0, token.size() - 1) : token;
}

bool IsArrow(std::string_view token) {
    return token == "->" || token == "<-";
}

bool IsDirection(std::string_view token) {
    return NamesEqual(token, "Rx") || NamesEqual(token, "Tx");
}

/// Four hexadecimal digits, with "0x" in front or without.
std::optional<std::uint32_t> DeviceOf(std::string_view token) {
    constexpr std::size_t kDigits = 4;
    const std::string_view digits = WithoutHexMark(token);
    return digits.size() == kDigits ? DigitsOf(digits, 16) : std::nullopt;
}

constexpr unsigned kDeviceDigits = 4;
constexpr char kQuote = '"';

/// Reads the tokens of one line.
class PrefixReader {
  public:
    explicit PrefixReader(CapturedMessage& out) : out_(out) {}

    /// False for a token that is no part of a prefix.
    bool Take(std::string_view token) {
        const std::string_view text = WithoutMarks(token);
        if (IsArrow(token)) {
            isBehindArrow_ = true;
            isReturn_ = token == "<-";
            return true;
        }
        return TakeTime(text) || TakeDirection(text) || TakeDevice(text);
    }
    /// What stands in quotes is a time, whatever it looks like, and behind a time a direction.
    bool TakeQuoted(std::string_view text) {
        const bool isTime = out_.time.empty() && !out_.hasFreeTexts;
        std::string& kept = isTime ? out_.time : out_.direction;
        if (!kept.empty()) {
            return false;
        }
        kept = text;
        out_.hasFreeTexts = true;
        isDate_ = false;
        return true;
    }
    /// An arrow without a device stands for the direction.
    void Finish() {
        if (isBehindArrow_ && !out_.source && !out_.destination && out_.direction.empty()) {
            out_.direction = isReturn_ ? "<-" : "->";
        }
        if (isReturn_) {
            std::swap(out_.source, out_.destination);
        }
    }

  private:
    bool TakeTime(std::string_view text) {
        if (isDate_ ? IsTime(text) : out_.time.empty() && (IsTime(text) || IsDate(text))) {
            isDate_ = !isDate_ && IsDate(text);
            (out_.time += out_.time.empty() ? "" : " ") += text;
            return true;
        }
        return false;
    }
    bool TakeDirection(std::string_view text) {
        if (!out_.direction.empty() || !IsDirection(text)) {
            return false;
        }
        out_.direction = FoldCase(text.front()) == 'r' ? "Rx" : "Tx";
        return true;
    }
    bool TakeDevice(std::string_view text) {
        if (const std::size_t arrow = text.find("->"); arrow != std::string_view::npos) {
            const auto from = DeviceOf(text.substr(0, arrow));
            const auto to = DeviceOf(text.substr(arrow + 2));
            if (out_.source || out_.destination || !from || !to) {
                return false;
            }
            out_.source = from;
            out_.destination = to;
            return true;
        }
        auto& device = isBehindArrow_ || out_.source ? out_.destination : out_.source;
        const auto value = DeviceOf(text);
        if (device || !value) {
            return false;
        }
        device = value;
        return true;
    }

    CapturedMessage& out_;
    bool isDate_ = false;  // what was read last is a date, and a time may come
    bool isBehindArrow_ = false;
    bool isReturn_ = false;
};

/// An address has points; so have dates, and a time behind them.
bool MayBeAddress(std::string_view token) {
    const auto points = std::ranges::count(token, '.');
    return points > 2 ? token.find(':') == std::string_view::npos
                      : points == 2 && !IsDate(token) && !IsTime(token);
}

/// The end of the first token. A comma may stand in front of the fraction of a time, but four digits behind
/// one are the address of a device.
std::size_t TokenEnd(std::string_view line) {
    constexpr std::size_t kAddressDigits = 4;
    const std::size_t end = std::min(line.find_first_of(kGaps), line.size());
    const bool isPlain = std::ranges::all_of(line.substr(0, end), IsDigit);
    if (end == 0 || end == line.size() || line[end] != ',' || (!isPlain && !IsTime(line.substr(0, end)))) {
        return end;
    }
    const std::size_t fraction = std::min(line.find_first_not_of("0123456789", end + 1), line.size());
    const std::size_t whole = std::min(line.find_first_of(kGaps, fraction), line.size());
    const bool isAlone = !isPlain || whole == line.size() || line[whole] == ' ' || line[whole] == '\t';
    return fraction > end + 1 && fraction - end - 1 != kAddressDigits && isAlone &&
                   IsTime(line.substr(0, whole))
               ? whole
               : end;
}

/// What is written without quotes is read as the same.
bool IsReadAgain(const std::string& text, std::string CapturedMessage::*member) {
    if (text.empty()) {
        return true;
    }
    CapturedMessage again;
    std::string_view rest = text;
    TakePrefix(rest, again);
    return rest.empty() && again.*member == text;
}

/// In front of devices an arrow would say which of them is which.
bool IsDirectionReadAgain(const CapturedMessage& message) {
    const bool isAlone = !message.source && !message.destination;
    return (isAlone || !IsArrow(message.direction)) &&
           IsReadAgain(message.direction, &CapturedMessage::direction);
}

/// With a blank behind it.
void AppendToken(const std::string& text, bool isPlain, std::string& out) {
    if (isPlain) {
        (out += text) += ' ';
        return;
    }
    const std::size_t begin = (out += kQuote).size();
    out += text;
    std::replace(out.begin() + static_cast<std::ptrdiff_t>(begin), out.end(), kQuote, '\'');
    (out += kQuote) += ' ';
}

}  // namespace

std::optional<double> SecondsOf(std::string_view time, double unit) {
    if (const auto seconds = SecondsIn(time, unit)) {
        return seconds;
    }
    double seconds = 0;
    if (const auto days = TakeDate(time)) {
        seconds = *days * kSecondsPerDay;
        if (time.empty()) {
            return seconds;
        }
        if (!TakeOne(time, "Tt_ ")) {
            return std::nullopt;
        }
    }
    const auto ofDay = TakeTimeOfDay(time);
    if (!ofDay) {
        return std::nullopt;
    }
    const double zone = TakeZone(time);
    return time.empty() ? std::optional(seconds + *ofDay - zone) : std::nullopt;
}

bool IsTime(std::string_view token) {
    constexpr std::size_t kLongerThanDevice = 5;
    const bool mayBeDevice = token.size() < kLongerThanDevice && std::ranges::all_of(token, IsDigit);
    return !token.empty() && IsDigit(token.front()) && !mayBeDevice && !IsDate(token) && SecondsOf(token);
}

bool IsDate(std::string_view token) {
    return TakeDate(token) && token.empty();
}

void TakePrefix(std::string_view& line, CapturedMessage& out) {
    PrefixReader reader(out);
    while (!line.empty()) {
        const std::size_t quote = line.front() == kQuote ? line.find(kQuote, 1) : std::string_view::npos;
        const bool isQuoted = quote != std::string_view::npos;
        const std::size_t end = isQuoted ? quote + 1 : TokenEnd(line);
        const std::string_view token = line.substr(0, end);
        if (isQuoted ? !reader.TakeQuoted(token.substr(1, end - 2))
                     : MayBeAddress(token) || !reader.Take(token)) {
            break;
        }
        line.remove_prefix(std::min(line.find_first_not_of(kGaps, end), line.size()));
    }
    reader.Finish();
}

void AppendPrefix(const CapturedMessage& message, std::string& out) {
    const bool isTimePlain = !message.hasFreeTexts || IsReadAgain(message.time, &CapturedMessage::time);
    const bool isDirectionPlain = !message.hasFreeTexts || IsDirectionReadAgain(message);
    if (!message.time.empty() || !isDirectionPlain) {
        AppendToken(message.time, isTimePlain && !message.time.empty(), out);
    }
    if (!message.direction.empty()) {
        AppendToken(message.direction, isDirectionPlain, out);
    }
    if (message.source) {
        AppendHexNumber(out, *message.source, kDeviceDigits);
        out += ' ';
    }
    if (message.destination) {
        AppendHexNumber(out += "-> ", *message.destination, kDeviceDigits);
        out += ' ';
    }
}

}  // namespace tarvex
