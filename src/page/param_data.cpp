#include "page/param_data.h"

#include <vector>

#include "page/json_text.h"
#include "params/classified_stream.h"
#include "params/enumeration.h"
#include "params/kind_name.h"
#include "params/number.h"
#include "params/stream_case.h"
#include "review/own_texts.h"
#include "review/param_members.h"
#include "review/param_words.h"

namespace tarvex::page {
namespace {

class ParamWriter {
  public:
    void Add(const ZMTParam& param) {
        json_.BeginObject();
        AddHead(param);
        if (param.IsType(kParamNumber)) {
            AddNumber(static_cast<const ZMTParamNumber&>(param));
        } else if (param.IsType(kParamEnum)) {
            AddValues(static_cast<const ZMTParamEnum&>(param));
        } else if (param.IsType(kParamBitField) || param.IsType(kParamBool)) {
            AddBits(static_cast<const ZMTParamBitField&>(param));
        } else {
            AddMembers(param);
        }
        json_.EndObject();
    }

    std::string Take() { return json_.Take(); }

  private:
    void AddHead(const ZMTParam& param) {
        json_.Key("kind").Text(KindName(param.Kind()));
        json_.Key("type").Text(review::TypeText(param));
        if (param.IsType(kParamStreamCase)) {
            AddCase(static_cast<const ZMTParamStreamCase&>(param));
            return;
        }
        json_.Key("name").Text(review::OwnName(param));
        json_.TextMember("databaseName", IsOther(param) ? param.GetName() : "");
        json_.Key("length").Text(review::LengthText(param));
        if (const ZMTParam* selector = review::SelectorOf(param)) {
            json_.TextMember("selector", selector->GetName());
        }
        if (param.IsType(kParamClassifiedStream)) {
            json_.TextMember("media", static_cast<const ZMTParamClassifiedStream&>(param).MediaType());
        }
        json_.TextMember("description", review::DescriptionText(param));
    }

    /// What databases make of the name is worth a word.
    static bool IsOther(const ZMTParam& param) {
        return param.GetName() != review::OwnName(param) && review::LacksLetters(review::OwnName(param));
    }

    void AddCase(const ZMTParamStreamCase& streamCase) {
        if (!review::IsAlways(streamCase)) {
            json_.Key("when").Text(review::CaseText(streamCase));
        }
        if (streamCase.RepeatedFrom() != ZMTParamStreamCase::kNotRepeated) {
            json_.Key("repeated").Number(streamCase.RepeatedFrom());
        }
    }

    void AddNumber(const ZMTParamNumber& number) {
        json_.TextMember("range", review::RangeText(number));
        json_.TextMember("step", review::StepText(number));
        if (number.Exponent() != 0) {
            json_.Key("exponent").Signed(number.Exponent());
        }
        json_.TextMember("unit", review::UnitText(number));
    }

    void AddValues(const ZMTParamEnum& enumeration) {
        json_.Key("values").BeginArray();
        const std::vector<review::ValueTexts> texts = review::OwnValues(enumeration);
        auto text = texts.begin();
        for (const ZMTEnumValue& value : enumeration.Items()) {
            json_.Text(review::CodesText(value)).Text(text->name).Text(text->description);
            ++text;
        }
        json_.EndArray();
    }

    void AddBits(const ZMTParamBitField& field) {
        json_.Key("bits").BeginArray();
        for (const ZMTParamBoolField& bit : field.Items()) {
            const review::BitTexts texts = review::OwnTexts(bit);
            json_.BeginArray().Number(bit.BitPos()).Text(texts.name);
            json_.Text(texts.whenTrue).Text(texts.whenFalse).EndArray();
        }
        json_.EndArray();
    }

    void AddMembers(const ZMTParam& param) {
        bool isOpen = false;
        review::VisitMembers(param, [&](const ZMTParam& member) {
            if (!isOpen) {
                json_.Key("members").BeginArray();
                isOpen = true;
            }
            Add(member);
        });
        if (isOpen) {
            json_.EndArray();
        }
    }

    JsonText json_;
};

}  // namespace

std::string ParamData(const ZMTParam& param) {
    ParamWriter writer;
    writer.Add(param);
    return writer.Take();
}

}  // namespace tarvex::page
