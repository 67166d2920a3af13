/// What parameters are, in words that all commands share.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "params/bool_field.h"
#include "params/enum_value.h"
#include "params/layout.h"
#include "params/number.h"
#include "params/stream_case.h"

namespace tarvex::review {

// Names and texts of the catalog come out as it has them; whoever prints them hides their control characters.

/// "number", "bit field", "short stream"
std::string KindText(const ZMTParam& param);
/// The same, with the sign of a number: "unsigned number".
std::string TypeText(const ZMTParam& param);

/// The bytes that the parameter takes in every message; nothing when a message alone tells, when the catalog
/// does not say, and for bits, which take no bytes of their own.
std::optional<std::uint64_t> FixedBytes(const ZMTParam& param);
/// How long a parameter without fixed bytes may be: "at most 64 bytes", "at most 10 elements"; empty where
/// the catalog has no bound.
std::string LimitText(const ZMTParam& param);
/// "2 bytes", "open, at most 64 bytes", "open"; "5 bits" for a bit, a bit field or a signal of a stream,
/// behind its bytes where it has some: "2 bytes, 10 bits used". "unknown" for a number or record whose end is
/// not sure.
std::string LengthText(const ZMTParam& param);

/// A number in the shortest decimal form that reads back the same: "0.5", "-12", "1e+20".
std::string NumberText(double number);
/// What a raw value means, raw * 10^exponent, in full: "12.5" for 125 and -1.
std::string PhysicalText(std::int64_t raw, std::int32_t exponent);

/// The range of the physical value: "-12..12.5"; empty where the catalog gives none.
std::string RangeText(const ZMTParamNumber& number);
/// The step of the physical value: "0.5"; empty for none.
std::string StepText(const ZMTParamNumber& number);
/// "dB"; empty for a number that has none, and for coordinates.
std::string UnitText(const ZMTParamNumber& number);

/// The codes of a value: "0x02", "0x10..0x1F", ">=0x03".
std::string CodesText(const ZMTEnumValue& value);
/// What a bit means, in the words of the catalog: "on / off", for 1 and for 0.
std::string BitText(const ZMTParamBoolField& bit);
/// When a case stands in its stream, as the catalog says: "PosY=0x01", "PosX=Slot, PosY=0x01..0x03",
/// "PosY>=0x04", "PosY=-8..-1", "always".
std::string CaseText(const ZMTParamStreamCase& streamCase);
/// The case is the only one of its stream, and nothing chooses it.
bool IsAlways(const ZMTParamStreamCase& streamCase);

/// "complete", "open" or "incomplete"
std::string_view LayoutWord(Layout layout);

/// What the catalog says about the parameter to people, in one line, and about the record that it is; empty
/// where it says nothing, or was read without descriptions.
std::string DescriptionText(const ZMTParam& param);
/// The same of a block or function: the text of that child. The element may be null.
std::string DescriptionText(const Element* element, const char* name);

}  // namespace tarvex::review
