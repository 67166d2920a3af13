#include "catalog_mutator.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "catalog/op_types.h"
#include "params/basis_types.h"
#include "params/catalog_vocabulary.h"
#include "support.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace tarvex::fuzz {
namespace {

/// Elements that stand in no table of the catalog's.
constexpr const char* kElements[] = {
    "FunctionCatalog", "FBlock",         "FBlockID",   "FBlockName",     "Function",         "FunctionID",
    "FunctionName",    "FunctionClass",  "Property",   "Method",         "ERParam",          "Definition",
    "TypeDef",         "TDefName",       "TDefSize",   "UnitDef",        "UnitDefName",      "UnitDefCode",
    "ParamPos",        "ParamName",      "TNumber",    "BasisDataType",  "Exponent",         "RangeMin",
    "RangeMax",        "Step",           "Unit",       "TEnum",          "TEnumValue",       "TString",
    "TBool",           "TBitField",      "TBoolField", "BitTrueDesc",    "BitFalseDesc",     "TVoid",
    "TArray",          "TArrayName",     "TRecord",    "TRecordField",   "TRecordFieldName", "TStream",
    "StreamCase",      "PosDescription", "PosX",       "PosY",           "StreamParam",      "TShortStream",
    "TCStream",        "StreamSignal",   "SignalName", "SignalBitLength"};

/// Texts and attribute values at the edges of what numbers and ranges may be.
constexpr const char* kNumberTexts[] = {
    "",           " ",          "0",      "1",     "2",     "3",     "-1",     "7",          "8",
    "15",         "16",         "31",     "32",    "33",    "63",    "64",     "255",        "256",
    "4095",       "4096",       "65535",  "65536", "0xFF",  "0xFFF", "0xFFFF", "2147483647", "-2147483648",
    "0xFFFFFFFF", "4294967296", "0b1011", "1..3",  "0...5", "&gt;2", "#NULL#", "1.5",        "1e9",
    "x",          "NMax",       "1seq1",  "1seq2", "2seq2"};
constexpr const char* kNames[] = {"Pos",
                                  "Data",
                                  "PosX",
                                  "PosY",
                                  "%n%s%d",
                                  "ErrorCode",
                                  "Temp_ERFunction_A",
                                  "class_long_array",
                                  "type_record",
                                  "type_array",
                                  "type_stream",
                                  "type_unsigned_word",
                                  "&#228;&#246;&#252;&#223;&#8364;",
                                  "A_name_of_exactly_32_characters_",
                                  "A_name_longer_than_any_that_a_database_can_hold"};

struct Span {
    std::size_t begin;
    std::size_t end;
    std::size_t Size() const { return end - begin; }
};

struct ElementSpans {
    Span all;
    Span name;
    std::optional<Span> closingName;
};

/// What a catalog is made of, as far as its marks can be understood.
struct Parts {
    std::vector<ElementSpans> elements;
    std::vector<Span> values;  // texts, and attribute values without their quotes
};

void AddAttributes(const std::string& xml, Span tag, Parts& parts) {
    std::size_t at = tag.begin;
    while ((at = xml.find("=\"", at)) < tag.end) {
        const std::size_t end = xml.find('"', at + 2);
        if (end >= tag.end) {
            return;
        }
        parts.values.push_back({at + 2, end});
        at = end + 1;
    }
}

Parts PartsOf(const std::string& xml) {
    Parts parts;
    std::vector<std::size_t> open;
    std::size_t at = 0;
    while ((at = xml.find('<', at)) != std::string::npos) {
        const std::size_t end = xml.find('>', at);
        if (end == std::string::npos || at + 1 == end) {
            break;
        }
        const bool isEnd = xml[at + 1] == '/';
        const Span name{at + (isEnd ? 2 : 1), std::min(xml.find_first_of(" \t\n/>", at + 2), end)};
        if (isEnd && !open.empty()) {
            ElementSpans& element = parts.elements[open.back()];
            element.all.end = end + 1;
            element.closingName = name;
            open.pop_back();
        } else if (std::isalpha(static_cast<unsigned char>(xml[at + 1])) != 0) {
            parts.elements.push_back({{at, end + 1}, name, {}});
            AddAttributes(xml, {at, end}, parts);
            if (xml[end - 1] != '/') {
                open.push_back(parts.elements.size() - 1);
            }
        }
        const std::size_t next = std::min(xml.find('<', end), xml.size());
        if (!isEnd && next > end + 1 && next < xml.size() && xml[next + 1] == '/') {
            parts.values.push_back({end + 1, next});
        }
        at = end;
    }
    return parts;
}

class Mutation {
    template <class List>
    const auto& Any(const List& list) {
        return list[random_() % std::size(list)];
    }

  public:
    Mutation(std::string xml, unsigned seed) : xml_(std::move(xml)), random_(seed), parts_(PartsOf(xml_)) {}

    /// The changed catalog; nothing when it has no part that could be changed.
    std::optional<std::string> Run() {
        if (parts_.elements.empty() || parts_.values.empty()) {
            return std::nullopt;
        }
        const ElementSpans& element = Any(parts_.elements);
        const std::string text = xml_.substr(element.all.begin, element.all.Size());
        switch (random_() % 12) {
            case 0:
                Replace(element.all, "");
                break;
            case 1:
                xml_.insert(element.all.end, text);
                break;
            case 2:
                Swap(element.all, Any(parts_.elements).all);
                break;
            case 3:
            case 4:
                Rename(element);
                break;
            case 5:
                xml_.insert(Any(parts_.elements).all.begin, text);
                break;
            case 6:
                Replace(Any(parts_.elements).all, text);
                break;
            case 7: {
                const Span from = Any(parts_.values);
                Replace(Any(parts_.values), xml_.substr(from.begin, from.Size()));
                break;
            }
            default:
                Replace(Any(parts_.values), random_() % 3 == 0 ? Any(kNames) : Any(kNumberTexts));
                break;
        }
        return xml_;
    }

  private:
    void Replace(Span span, const std::string& text) { xml_.replace(span.begin, span.Size(), text); }

    void Swap(Span a, Span b) {
        if (b.begin < a.begin) {
            std::swap(a, b);
        }
        if (b.begin >= a.end) {  // neither is inside the other
            const std::string first = xml_.substr(a.begin, a.Size());
            const std::string second = xml_.substr(b.begin, b.Size());
            Replace(b, first);
            Replace(a, second);
        }
    }

    std::string AnyWord() {
        switch (random_() % 6) {
            case 0:
                return Any(kFunctionClasses).element;
            case 1:
                return Any(kFunctionClasses).parameterElement;
            case 2:
                return random_() % 2 == 0 ? Any(kOpTypes).propertyElement : Any(kOpTypes).methodElement;
            case 3:
                return random_() % 2 == 0 ? Any(kOpTypeElements) : Any(kBasisTypes);
            case 4:
                return random_() % 2 == 0 ? Any(kNewerFunctionClasses).element : Any(kNewerOpTypeElements);
            default:
                return Any(kElements);
        }
    }

    /// Half of the time to a word that the catalog has already.
    void Rename(const ElementSpans& element) {
        const Span other = Any(parts_.elements).name;
        const std::string word = random_() % 2 == 0 ? xml_.substr(other.begin, other.Size()) : AnyWord();
        if (element.closingName) {
            Replace(*element.closingName, word);
        }
        Replace(element.name, word);
    }

    std::string xml_;
    std::minstd_rand random_;
    Parts parts_;
};

}  // namespace

std::size_t MutateCatalog(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed) {
    constexpr unsigned kByteMutations = 5;  // one in so many
    if (seed % kByteMutations != 0) {
        const auto changed = Mutation(std::string(TextOf(data, size)), seed).Run();
        if (changed && !changed->empty() && changed->size() <= maxSize) {
            std::copy(changed->begin(), changed->end(), data);
            return changed->size();
        }
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}

void RequireKnownWords() {
    for (const std::string element : kElements) {
        Require(CatalogVocabulary().Find(element) != nullptr, element + " is a word of catalogs");
    }
}

}  // namespace tarvex::fuzz
