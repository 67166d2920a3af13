/// What a message of the importer means to the people who write catalogs.

#pragma once

#include <array>
#include <span>
#include <string_view>

#include "import/log/message.h"

namespace tarvex::review {

/// Where an excerpt stands in a catalog that has no other fault.
enum class Frame {
    Document,    ///< It is the whole catalog.
    Definition,  ///< In "Definition", beside types and units that are sane.
    Block,       ///< In "FunctionCatalog", behind the block "Amp" (0x22).
    Function,    ///< In that block, behind the function "Mute" (0x400), whose "FktDefId" is "fkt_mute".
    ManyErrors,  ///< There, in a catalog with 4,097 "ERParam", the last of which is called "Last".
    Parameter,   ///< In a property, behind the parameters "Kind" and "Mode" at the positions 1 and 2.
    Type,        ///< As the type of the parameter at position 3 there.
    StreamCase,  ///< In a stream that is the parameter at position 3 there.
};

/// What is not in the tree because of the fault that an excerpt has.
enum class Loss { Nothing, Part, Parameter, Operation, Function, Block, Definition, Catalog };

/// Numbers of other messages, as many as are not 0.
using Numbers = std::array<unsigned, 4>;

/// One message, explained. The texts are Markdown: names of a catalog and of settings stand in backquotes.
struct Explanation {
    const Message* message = nullptr;
    std::string_view when;       ///< What is at fault.
    std::string_view becomes{};  ///< What TARVEX does with the element.
    std::string_view repair{};   ///< How to mend it.
    Frame frame = Frame::Document;
    std::string_view
        excerpt{};  ///< Raises the message, and beside it only the two lists below, in this order.
    std::string_view noExcerpt{};  ///< Why there is none.
    Numbers behind{};              ///< Messages in front of it: of those that it follows from.
    Numbers followers{};           ///< Messages behind it, which follow from it.
    Loss loss = Loss::Nothing;
    bool isIncomplete = false;  ///< What a message consists of is not sure any more.
    std::string_view newer{};   ///< What is different where the forms of newer catalogs are read.
    bool isNewer = false;       ///< Raised only there.
};

/// Explanations that belong together.
struct Group {
    std::string_view heading;
    std::string_view introduction;
    std::span<const Explanation> explanations;
};

/// Why some excerpts are missing.
inline constexpr std::string_view kFoundBefore = "No catalog raises it: what it looks for was found before.";

/// What becomes of many elements.
inline constexpr std::string_view kParameterLeftOut = "The parameter is left out.";
inline constexpr std::string_view kCaseLeftOut = "The case is left out, the stream stays.";
inline constexpr std::string_view kFunctionLeftOut = "The function is left out of its block.";
inline constexpr std::string_view kBlockLeftOut = "The block is left out, with all of its functions.";

}  // namespace tarvex::review
