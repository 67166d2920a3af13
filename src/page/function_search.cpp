#include "page/function_search.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "kestrel/model_text.h"
#include "params/enumeration.h"
#include "params/number.h"
#include "review/own_texts.h"
#include "review/param_members.h"
#include "review/param_words.h"

namespace tarvex::page {
namespace {

/// The texts of the parameters of one function.
class ParamTexts {
  public:
    ParamTexts(Place place, SearchIndex& index) : place_(place), index_(index) {}

    /// `outer`: the parameters around it, "Data.", or nothing.
    void Add(const ZMTParam& param, const std::string& outer) {
        // Cases have names of the program's own making.
        const bool isNamed = !param.IsType(kParamStreamCase) && !param.IsType(kParamVoid);
        const std::string path = isNamed ? PathOf(param, outer) : outer;
        if (isNamed) {
            index_.Add(Topic::Parameter, review::OwnName(param), outer, place_);
            index_.Add(Topic::Description, review::DescriptionText(param), path, place_);
        }
        if (param.IsType(kParamNumber)) {
            index_.Add(Topic::Unit, review::UnitText(static_cast<const ZMTParamNumber&>(param)), path,
                       place_);
        } else if (param.IsType(kParamEnum)) {
            AddValues(static_cast<const ZMTParamEnum&>(param), path);
        } else if (param.IsType(kParamBitField) || param.IsType(kParamBool)) {
            AddBits(static_cast<const ZMTParamBitField&>(param), path);
            return;
        }
        review::VisitMembers(param, [&](const ZMTParam& member) { Add(member, path); });
    }

  private:
    /// Not longer than anybody reads, however deep it stands.
    static std::string PathOf(const ZMTParam& param, const std::string& outer) {
        constexpr std::size_t kMaxPath = 200;
        if (outer.size() > kMaxPath) {
            return outer;
        }
        return outer.empty() ? review::OwnName(param) : outer + "." + review::OwnName(param);
    }

    void AddValues(const ZMTParamEnum& enumeration, const std::string& path) {
        list_.clear();
        const std::vector<review::ValueTexts> texts = review::OwnValues(enumeration);
        auto text = texts.begin();
        for (const ZMTEnumValue& value : enumeration.Items()) {
            const std::string more = text->description.empty() ? "" : ": " + text->description;
            AddToList(review::CodesText(value), text->name + more);
            ++text;
        }
        index_.Add(Topic::Value, list_, path, place_);
    }

    void AddBits(const ZMTParamBitField& field, const std::string& path) {
        list_.clear();
        for (const ZMTParamBoolField& bit : field.Items()) {
            const review::BitTexts texts = review::OwnTexts(bit);
            AddToList(std::to_string(bit.BitPos()),
                      (texts.name.empty() ? "" : texts.name + ": ") + texts.Meanings());
        }
        index_.Add(Topic::Bit, list_, path, place_);
    }

    void AddToList(const std::string& number, std::string_view text) {
        list_.append(list_.empty() ? 0 : 1, kPartEnd).append(number).append(" ");
        const std::size_t begin = list_.size();
        list_.append(text);
        std::replace(list_.begin() + static_cast<std::ptrdiff_t>(begin), list_.end(), kPartEnd, ' ');
    }

    std::string list_;  // of one parameter
    Place place_;
    SearchIndex& index_;
};

}  // namespace

void AddNames(Topic topic, const std::string& name, const std::string& inDatabases, Place place,
              SearchIndex& index) {
    std::string alike = name;
    std::replace(alike.begin(), alike.end(), ' ', '_');  // a search sees no difference
    index.Add(topic, name, "", place);
    if (alike != inDatabases) {
        index.Add(topic, inDatabases, "", place);
    }
}

void AddToSearch(const FunctionPart& part, std::size_t function, SearchIndex& index) {
    const review::FunctionView& view = part.view;
    const review::FunctionTexts& texts = part.texts;
    const Place place = Place::OfFunction(function);
    AddNames(Topic::Function, part.name, view.target.function->GetName(), place, index);
    index.Add(Topic::Description, texts.description, kFunctionContext, place);
    ParamTexts params(place, index);
    for (const ZMTParam* param : view.parameters) {
        params.Add(*param, "");
    }
    for (const review::OperationView& operation : view.operations) {
        if (operation.message != nullptr) {
            index.AddOnce(Topic::Message, kestrel::NameText(operation.message->name),
                          Place::OfOperation(function, operation.address.opType));
        }
    }
    for (const review::OperationView* operation : part.looks.all) {
        for (const kestrel::Signal* signal = operation->message->firstSignal; signal != nullptr;
             signal = signal->next) {
            index.Add(Topic::Signal, kestrel::NameText(signal->name), "", place);
        }
    }
}

}  // namespace tarvex::page
