/// The records of a bus database that library and caller share. The library creates them, the caller fills
/// in their fields and the library reads the fields when it needs them: at a look-up, or when the database is
/// written. A record lives until its database is closed or the manager is destroyed; its address never
/// changes. The caller never frees one.
///
/// Names are UTF-8 and fill their array from the front; unused bytes are zero. A name that takes all 32 bytes
/// has no terminator.

#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

/// Bytes of a name in a record, and of the text of a value description.
inline constexpr std::size_t kNameSize = 32;

// NOLINTBEGIN(readability-identifier-naming): callers have these names

/// Allocates `size` bytes for a text or a `valdesc` that is about to be handed to the library, which frees it
/// later. Never returns null; throws `std::bad_alloc` when there is no memory.
void* kestrel_malloc(std::size_t size);

/// Frees memory of `kestrel_malloc` that was not handed to the library after all. Null is allowed.
void kestrel_free(void* memory);

/// A node: one device of the network.
struct symblk {
    /// The node's name.
    char name[kNameSize] = {};
};

/// Set in a message's identifier when the identifier is an extended one.
inline constexpr std::uint32_t kExtendedIdentifier = 0x80000000U;

/// A message.
struct msgblk {
    /// The message's name.
    char name[kNameSize] = {};
    /// The identifier, with `kExtendedIdentifier` where it applies.
    std::uint32_t identifier = 0;
    /// Length in bytes.
    std::uint16_t length = 0;
    /// The node that sends the message, or null. It has to be a node of the message's own database.
    symblk* node = nullptr;
};

/// One text for one raw value of a signal; a signal's descriptions form a list. The caller allocates every
/// entry with `kestrel_malloc`; an entry linked to a signal belongs to the library.
struct valdesc {
    /// The raw value.
    std::uint32_t value;
    /// What the value means.
    char text[kNameSize];
    /// The next entry, or null in the last one.
    valdesc* next;
};

/// Signal flag: the byte order is big-endian; little-endian without it.
inline constexpr std::uint16_t kSignalBigEndian = 1U << 0;
/// Signal flag: the value is signed.
inline constexpr std::uint16_t kSignalSigned = 1U << 1;
/// Signal flag: the signal is its message's multiplexor, whose value selects the multiplexed signals.
inline constexpr std::uint16_t kSignalMultiplexor = 1U << 2;
/// Signal flag: the signal is present only while the multiplexor has the value `multiplexer_value`.
inline constexpr std::uint16_t kSignalMultiplexed = 1U << 3;

/// A signal of a message. A new one is all zero: unsigned, little-endian, at bit 0.
struct sigblk {
    /// The signal's name.
    char name[kNameSize] = {};
    /// Position in the message in bits; of a big-endian signal that of its most significant bit, where every
    /// byte's bits count from 0 (its lowest) upwards: the highest bit of byte 0 is 7, that of byte 1 is 15.
    std::uint16_t start_bit = 0;
    /// Length in bits.
    std::uint16_t length = 0;
    /// The `kSignal...` flags that apply; other bits mean nothing.
    std::uint16_t flags = 0;
    /// The multiplexor's value for which a multiplexed signal is present.
    std::uint32_t multiplexer_value = 0;
    /// First entry of the list of value descriptions, or null. The list belongs to the library.
    valdesc* value_descriptions = nullptr;
    /// Room for callers that clear it; the library neither reads nor stores it.
    std::uint32_t reserved_1 = 0;
    /// Room for callers that clear it; the library neither reads nor stores it.
    std::uint32_t reserved_2 = 0;
};

/// Bytes of a unit.
inline constexpr std::size_t kUnitSize = 200;

/// How the raw values of a signal stand for physical ones. Every number is finite.
struct sigscale {
    /// The physical value is the raw one times this; above 0.
    double factor = 1;
    /// Smallest and largest physical value, where they are known.
    std::optional<double> minimum{};
    std::optional<double> maximum{};
    /// Distance of the physical values that the signal takes, where it is known.
    std::optional<double> step{};
    /// What the physical values are counted in; empty for none.
    std::string unit{};

    // What the compiler makes of it compares with a plain 0.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    auto operator<=>(const sigscale&) const = default;
};

/// What kind of object an attribute belongs to.
enum class AttrObject : std::uint32_t { Database = 0, Node = 1, Message = 2 };

/// What values an attribute takes.
enum class AttrType : std::uint32_t { Integer = 0, String = 2, Enumeration = 3 };

/// The definition of an attribute. A new one is all zero: an integer attribute of databases, without a name.
/// It has to be filled in before the first value of the attribute is set. Its texts are allocated with
/// `kestrel_malloc` and belong to the library.
struct attr_def {
    /// The kind of object that carries the attribute.
    AttrObject object_kind;
    /// The attribute's name, unique among the attributes of one kind of object.
    char name[kNameSize];
    /// Type of the values; it decides which members of the two unions count.
    AttrType value_type;
    union {
        /// Integer: the smallest value.
        double minimum;
        /// Enumeration: the names of the values, joined with "\n"; the first has index 0.
        char* value_list;
    };
    /// Integer: the largest value.
    double maximum;
    union {
        /// Integer: the value of an object for which none was set.
        double default_number;
        /// String and enumeration: the text, or the name of the value, of an object for which none was set.
        char* default_text;
    };
};

/// The value of an attribute; the attribute's definition says which member counts.
union kestrel_attr_value_t {
    /// Integer: the value. Enumeration: the index of the value's name in the definition's list.
    double number;
    /// String: a text allocated with `kestrel_malloc`. Null counts as the empty text.
    char* text;
};

// NOLINTEND(readability-identifier-naming)

static_assert(sizeof(kestrel_attr_value_t) == 8);
