/// Values of parameters as people and reports write them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "disasm/string_item.h"

namespace tarvex {

struct AsmField;
class ZMostParameter;

/// Where something stands: so many lines below the one with the address, and the byte in it, from 1.
struct AsmPlace {
    std::size_t line = 0;
    std::size_t column = 1;
};

/// A value, in one form or, in a report, with its text and its parts.
struct AsmValue {
    enum class Form : unsigned { Word, Quoted, List, Fields, Bytes, Item };

    Form form = Form::Word;
    /// Of words, quoted texts and items.
    std::string text;
    /// That somebody asks for, of quoted texts.
    std::optional<StringEncoding> encoding;
    std::vector<std::uint8_t> bytes;
    std::vector<AsmValue> list;
    std::vector<AsmField> fields;
    AsmPlace place;
    /// The number behind the text, of items that have one.
    std::optional<std::int64_t> raw;
    /// Of an item of a report: what the message has there, and whether the item says still the same.
    const ZMostParameter* original = nullptr;
    bool isUnchanged = false;
};

/// A value and the parameter that it is for.
struct AsmField {
    std::string name;
    /// Of an entry or a repetition, from 1; 0 for none.
    unsigned entry = 0;
    AsmValue value = {};
    AsmPlace place = {};
};

/// What is wrong, and where.
struct AsmFault {
    std::string text;
    AsmPlace place = {};
};

/// A name and "=" stand in front of the text, behind blanks.
bool BeginsWithField(std::string_view text);

/// Reads "Bass=12.5 Treble=-3 dB List=[1,{A=2,B="x"}] Body=hex:01FF". A word ends where the next name begins,
/// or with the line; `column`: of the first character. Nothing on success, else what is wrong.
std::optional<AsmFault> ParseFields(std::string_view text, std::size_t column, std::vector<AsmField>& out);

/// How many characters a text has. Bytes that are no UTF-8 count as one with the character before them.
std::size_t CountCharacters(std::string_view text);

}  // namespace tarvex
