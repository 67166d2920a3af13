#include "review/param_text.h"

#include <algorithm>
#include <vector>

#include "import/text/shown_text.h"
#include "params/enumeration.h"
#include "params/number.h"
#include "params/stream_case.h"
#include "review/catalog_texts.h"
#include "review/own_texts.h"
#include "review/param_members.h"
#include "review/param_words.h"
#include "review/text_table.h"

namespace tarvex::review {
namespace {

constexpr std::size_t kStep = 2;

class ParamLines {
  public:
    void Add(const ZMTParam& param, std::size_t indent) {
        Line(indent, HeadOf(param));
        AddDetails(param, indent + kStep);
    }

    std::string Take() { return std::move(text_); }

  private:
    void Line(std::size_t indent, const std::string& line) {
        text_.append(indent, ' ').append(line).append("\n");
    }

    void AddDetails(const ZMTParam& param, std::size_t indent) {
        text_ += IndentedText(Shown(DescriptionText(param)), indent);
        if (param.IsType(kParamNumber)) {
            const std::string scale = ScaleOf(static_cast<const ZMTParamNumber&>(param));
            if (!scale.empty()) {
                Line(indent, scale);
            }
        } else if (param.IsType(kParamEnum)) {
            AddValues(static_cast<const ZMTParamEnum&>(param), indent);
        }
        unsigned slot = 0;
        VisitMembers(param, [&](const ZMTParam& member) {
            if (param.IsType(kParamStreamCase) &&
                static_cast<const ZMTParamStreamCase&>(param).RepeatedFrom() == slot) {
                Line(indent, "repeated to the end:");
            }
            ++slot;
            AddMember(member, indent);
        });
    }

    void AddMember(const ZMTParam& member, std::size_t indent) {
        if (member.IsType(kParamBoolField)) {
            const auto& bit = static_cast<const ZMTParamBoolField&>(member);
            const BitTexts texts = OwnTexts(bit);
            const std::string name = texts.name.empty() ? std::string() : "  " + ShownName(texts.name);
            Line(indent, "bit " + std::to_string(bit.BitPos()) + name + "  " + ShownName(texts.Meanings()));
            return;
        }
        Add(member, indent);
    }

    /// "range -12.5..12.5, step 0.5, exponent -1, unit dB"
    static std::string ScaleOf(const ZMTParamNumber& number) {
        std::string text;
        const auto add = [&](const char* what, const std::string& value) {
            if (!value.empty()) {
                text.append(text.empty() ? "" : ", ").append(what).append(value);
            }
        };
        add("range ", RangeText(number));
        add("step ", StepText(number));
        add("exponent ", number.Exponent() == 0 ? std::string() : std::to_string(number.Exponent()));
        add("unit ", ShownName(UnitText(number)));
        return text;
    }

    void AddValues(const ZMTParamEnum& enumeration, std::size_t indent) {
        std::size_t width = 0;
        for (const ZMTEnumValue& value : enumeration.Items()) {
            width = std::max(width, CodesText(value).size());
        }
        const std::vector<ValueTexts> texts = OwnValues(enumeration);
        auto text = texts.begin();
        for (const ZMTEnumValue& value : enumeration.Items()) {
            std::string codes = CodesText(value);
            codes.append(width - codes.size(), ' ');
            Line(indent, codes + "  " + ShownName(text->name));
            text_ += IndentedText(Shown(text->description), indent + width + kStep + kStep);
            ++text;
        }
    }

    static std::string HeadOf(const ZMTParam& param) {
        if (param.IsType(kParamStreamCase)) {
            const auto& streamCase = static_cast<const ZMTParamStreamCase&>(param);
            return (IsAlways(streamCase) ? "" : "case ") + ShownName(CaseText(streamCase));
        }
        const std::string own = OwnName(param);
        std::string head = own.empty() ? "(unnamed)" : ShownName(ShortestName(param));
        if (LacksLetters(own) && !param.GetName().empty()) {
            head += "  \"" + ShownName(own) + "\"";
        }
        head += "  " + TypeText(param) + ", " + LengthText(param);
        if (const ZMTParam* selector = SelectorOf(param)) {
            head += ", chosen by " + ShownName(selector->GetName());
        }
        return head;
    }

    std::string text_;
};

}  // namespace

std::string ParamText(const ZMTParam& param) {
    ParamLines lines;
    lines.Add(param, 0);
    return lines.Take();
}

}  // namespace tarvex::review
