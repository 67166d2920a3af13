/// What may differ between two catalogs.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex::review {

enum class ChangeKind {
    Added,
    Removed,
    Renamed,  ///< The same number or place, another name.
    Moved,    ///< The same name, another number or place.
    Changed
};

/// What has changed.
enum class Object { Block, Function, Operation, Parameter, Value, Bit, Case };

/// Which side of it has changed.
enum class Aspect {
    Existence,  ///< It was added or removed.
    Name,       ///< Of a case: the selector's values for which it stands.
    Number,     ///< Identifier, code of a value, position of a bit.
    Position,   ///< Among the parameters of its message, or the members of its container.
    Class,      ///< Property or method.
    Type,       ///< Kind and sign.
    Layout,     ///< How far the bytes of an operation are known, and what is missing or not sure.
    Length,     ///< In bytes or bits.
    Limit,      ///< The most elements or bytes of what has no length of its own.
    Range,
    Step,
    Exponent,
    Unit,
    Texts,  ///< Of a bit.
    MediaType,
    Selector,    ///< The parameter that chooses what stands in another one.
    Repetition,  ///< Which members of a case repeat to the end of the stream.
    Description
};

/// What it means for the messages on the bus.
enum class Effect {
    None,     ///< They stay as they are; other values may come, or people call things by other names.
    Meaning,  ///< The same bytes mean something else.
    Bytes     ///< Messages come or go, have another address, or other bytes or bits at some place.
};

/// What a block or function is found by; in the new catalog, if it is there.
struct Place {
    std::string name;
    std::uint32_t number = 0;
};

/// A difference. What it was and is may take kMaxKeptText bytes each, other texts kMaxShownText.
struct Change {
    ChangeKind kind = ChangeKind::Changed;
    Object object = Object::Parameter;
    Aspect aspect = Aspect::Existence;
    Effect effect = Effect::None;
    Place block;
    std::optional<Place> function = std::nullopt;  ///< Nothing for a change of the block.
    /// The parameter, with the containers that it stands in: "Data.Title"; empty for other objects.
    std::string path = {};
    /// The operation, value, bit or case: "Set", "0x02 Pause". Of a parameter its name in the catalog, if the
    /// path lacks letters of it.
    std::string item = {};
    std::string before = {};
    std::string after = {};
    /// The names of the operations concerned.
    std::vector<std::string_view> operations = {};
    /// Of what is only in one catalog: the message that says why it could not be read in the other; 0 for
    /// none.
    unsigned lostBy = 0;
    /// Functions that have the same change because they refer to the same definition.
    std::size_t alsoIn = 0;
};

/// Longer texts are cut, so that a large name in every line makes no endless output.
inline constexpr std::size_t kMaxShownText = 200;
/// Programs get more of what a change was and is.
inline constexpr std::size_t kMaxKeptText = 4000;
/// A text as a change keeps it: without what people can't see, and cut.
std::string ShownText(std::string_view text);

/// What something was and is.
struct Sides {
    std::string before;
    std::string after;
};
/// At most so many bytes of both. Texts that begin alike are cut in front of their first difference, too, so
/// that it is seen.
Sides CutSides(std::string_view before, std::string_view after, std::size_t maxBytes);
/// Sets what a change was and is, as the change keeps it.
void SetSides(Change& change, std::string_view before, std::string_view after);

// What they are called in every format.
std::string_view KindName(ChangeKind kind);
std::string_view ObjectName(Object object);
std::string_view AspectName(Aspect aspect);
std::string_view EffectName(Effect effect);

}  // namespace tarvex::review
