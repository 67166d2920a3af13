/// What monitors write in front of a message: times, directions and addresses of devices.

#pragma once

#include <optional>
#include <string_view>

#include "capture/captured_message.h"

namespace tarvex {

/// Seconds with a fraction, a time of day, or a date and a time in one piece.
bool IsTime(std::string_view token);

/// A date alone: 2024-06-03, 2024/06/03 or 03.06.2024.
bool IsDate(std::string_view token);

/// Appends time, direction and devices as a line has them in front of its message, each with a blank behind
/// it: "12.5 Rx 0100 -> 0401 ". A time or a direction of another form, which tables and JSON may have, stands
/// in quotes, so that it is read as the same.
void AppendPrefix(const CapturedMessage& message, std::string& out);

/// The seconds that a time stands for, from midnight or, with a date, from some day on; nothing for a text
/// that is no time. Times of one capture can be compared. `unit`: the seconds that a plain number counts in;
/// 0 where nobody says: then they are seconds, and from 11, 14 and 17 digits on, as the time since 1970 has
/// them, thousandths, millionths and billionths of one.
std::optional<double> SecondsOf(std::string_view time, double unit = 0);

/// Takes what stands in front of the address off a line that begins with no blank.
void TakePrefix(std::string_view& line, CapturedMessage& out);

}  // namespace tarvex
