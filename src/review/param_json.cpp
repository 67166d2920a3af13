#include "review/param_json.h"

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "import/text/parse_value.h"
#include "params/classified_stream.h"
#include "params/enumeration.h"
#include "params/kind_name.h"
#include "params/number.h"
#include "params/short_stream.h"
#include "params/stream.h"
#include "params/stream_signal.h"
#include "params/string.h"
#include "review/fault_json.h"
#include "review/own_texts.h"
#include "review/param_members.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

Json Finite(double number) {
    return std::isfinite(number) ? Json(number) : Json(nullptr);
}

/// First and last value of a selector for which a case stands; null for one without an upper bound.
Json Range(const ZMTParamStreamCase& streamCase) {
    const auto last = static_cast<std::int32_t>(streamCase.PosYMax());
    return Json::array({static_cast<std::int32_t>(streamCase.PosYMin()),
                        last == kOpenRangeEnd ? Json(nullptr) : Json(last)});
}

void AddNumber(const ZMTParamNumber& number, Json& json) {
    json["signed"] = number.IsSigned();
    json["exponent"] = number.Exponent();
    json["range"] = number.HasRange() ? Json::array({Finite(number.RangeMin()), Finite(number.RangeMax())})
                                      : Json(nullptr);
    json["step"] = number.Step() == 0 ? Json(nullptr) : Finite(number.Step());
    json["unit"] = OrNull(UnitText(number));
}

void AddValues(const ZMTParamEnum& enumeration, Json& json) {
    Json values = Json::array();
    const std::vector<ValueTexts> texts = OwnValues(enumeration);
    auto text = texts.begin();
    for (const ZMTEnumValue& value : enumeration.Items()) {
        const bool isOpen = value.CodeMax() == static_cast<std::uint32_t>(kOpenRangeEnd);
        values.push_back(
            {{"codes", Json::array({value.CodeMin(), isOpen ? Json(nullptr) : Json(value.CodeMax())})},
             {"name", value.GetName()},
             {"catalog_name", OrNull(text->name)},
             {"description", OrNull(text->description)}});
        ++text;
    }
    json["values"] = std::move(values);
}

void AddBits(const ZMTParamBitField& field, Json& json) {
    json["bit_length"] = field.Length();
    Json bits = Json::array();
    for (const ZMTParamBoolField& bit : field.Items()) {
        const BitTexts texts = OwnTexts(bit);
        bits.push_back({{"bit", bit.BitPos()},
                        {"name", OrNull(bit.GetName())},
                        {"true", bit.TrueDesc()},
                        {"false", bit.FalseDesc()},
                        {"catalog_name", OrNull(texts.name)},
                        {"catalog_true", texts.whenTrue},
                        {"catalog_false", texts.whenFalse}});
    }
    json["bits"] = std::move(bits);
}

Json MembersOf(const ZMTParam& param) {
    Json members = Json::array();
    VisitMembers(param, [&](const ZMTParam& member) { members.push_back(ParamJson(member)); });
    return members;
}

void AddCases(const ZMTParamCaseStream& stream, Json& json) {
    Json cases = Json::array();
    for (const ZMTParamStreamCase& streamCase : stream.Items()) {
        const unsigned repeated = streamCase.RepeatedFrom();
        cases.push_back({{"pos_x", OrNull(streamCase.PosXString())},
                         {"pos_y", Range(streamCase)},
                         {"repeated_from",
                          repeated == ZMTParamStreamCase::kNotRepeated ? Json(nullptr) : Json(repeated + 1)},
                         {"members", MembersOf(streamCase)}});
    }
    json["cases"] = std::move(cases);
}

/// The bound of a parameter without fixed bytes; null for none.
Json Bound(std::uint32_t bound) {
    return bound == std::numeric_limits<std::uint32_t>::max() ? Json(nullptr) : Json(bound);
}

void AddKind(const ZMTParam& param, Json& json) {
    switch (param.Kind()) {
        case ParamKind::Array:
            json["max_elements"] = Bound(static_cast<const ZMTParamArray&>(param).NMax());
            json["members"] = MembersOf(param);
            break;
        case ParamKind::BitField:
        case ParamKind::Bool:
            AddBits(static_cast<const ZMTParamBitField&>(param), json);
            break;
        case ParamKind::ClassifiedStream: {
            const auto& stream = static_cast<const ZMTParamClassifiedStream&>(param);
            json["max_bytes"] = Bound(stream.MaxLength());
            json["media_type"] = OrNull(stream.MediaType());
            break;
        }
        case ParamKind::Enum:
            AddValues(static_cast<const ZMTParamEnum&>(param), json);
            break;
        case ParamKind::Number:
            AddNumber(static_cast<const ZMTParamNumber&>(param), json);
            break;
        case ParamKind::Record:
            json["members"] = MembersOf(param);
            break;
        case ParamKind::ShortStream:
            json["max_bytes"] = Bound(static_cast<const ZMTParamShortStream&>(param).MaxLength());
            AddCases(static_cast<const ZMTParamCaseStream&>(param), json);
            break;
        case ParamKind::Stream:
            json["max_bytes"] = Bound(static_cast<const ZMTParamStream&>(param).Length());
            AddCases(static_cast<const ZMTParamCaseStream&>(param), json);
            break;
        case ParamKind::StreamSignal:
            json["bit_length"] = static_cast<const ZMTParamStreamSignal&>(param).BitLength();
            break;
        case ParamKind::String:
            json["max_bytes"] = Bound(static_cast<const ZMTParamString&>(param).MaxSize());
            break;
        case ParamKind::Base:
        case ParamKind::BoolField:
        case ParamKind::FktIDBitStream:
        case ParamKind::StreamCase:
        case ParamKind::Void:
            break;
    }
}

}  // namespace

Json ParamJson(const ZMTParam& param) {
    const std::optional<std::uint64_t> bytes = FixedBytes(param);
    const ZMTParam* selector = SelectorOf(param);
    Json json{{"name", param.GetName()},
              {"catalog_name", OrNull(OwnName(param))},
              {"kind", KindName(param.Kind())},
              {"bytes", bytes ? Json(*bytes) : Json(nullptr)},
              {"description", OrNull(DescriptionText(param))},
              {"selector", selector == nullptr ? Json(nullptr) : Json(selector->GetName())}};
    AddKind(param, json);
    return json;
}

}  // namespace tarvex::review
