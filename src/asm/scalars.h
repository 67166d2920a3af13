/// From the values of single parameters to bytes.

#pragma once

#include <string>

#include "asm/asm_value.h"
#include "params/bit_field.h"
#include "params/enumeration.h"
#include "params/fkt_id_bit_stream.h"
#include "params/number.h"
#include "params/stream_signal.h"
#include "params/string.h"

namespace tarvex {

/// What an encoding comes to: appended bytes, or what is wrong. Faults name no parameter.
struct AsmResult {
    std::string fault = {};
    AsmPlace place = {};
    /// The fault is about range or step alone.
    bool mayBeForced = false;

    bool IsGood() const { return fault.empty(); }
};

using AsmBytes = std::vector<std::uint8_t>;

AsmResult EncodeNumber(const ZMTParamNumber& number, const AsmValue& value, AsmBytes& out);
AsmResult EncodeEnum(const ZMTParamEnum& enumeration, const AsmValue& value, AsmBytes& out);
AsmResult EncodeBits(const ZMTParamBitField& field, const AsmValue& value, AsmBytes& out);
AsmResult EncodeString(const ZMTParamString& string, const AsmValue& value, AsmBytes& out);
AsmResult EncodeFunctionIDs(const AsmValue& value, AsmBytes& out);
/// The value of a signal, which the caller packs.
AsmResult ReadSignal(const ZMTParamStreamSignal& signal, const AsmValue& value, std::uint32_t& out);

/// What is wrong with a value.
AsmResult Complaint(const AsmValue& value, std::string text);

/// The item was decoded from the parameter.
bool IsOf(const ZMTNode& param, const ZMostParameter* item);

/// What a parameter takes: "a number from 0 to 100 %".
std::string ExpectedOf(const ZMTParam& param);

/// Appends a number in so many bytes, the most significant first.
void AppendBytes(AsmBytes& out, std::uint32_t number, std::int32_t count);

/// ", expected " and the names that are like the one given, or the first of all.
std::string ExpectedNames(std::string_view given, const std::vector<std::string_view>& names);

}  // namespace tarvex
