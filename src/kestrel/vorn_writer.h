/// Writes a database as a Vorn file.
///
/// Vorn is JSON with a fixed layout, so that two databases can be compared line by line with any text tool: a
/// node, an attribute definition and a signal take one line each, a message takes two and the lines of its
/// signals, and keys always come in the same order. The text is UTF-8 and ends with a line feed.
///
///     {
///     "format": "Vorn",
///     "version": 1,
///     "database": "cabin",
///     "attributes": {"Author": "Ada"},
///     "attribute_definitions": [
///       {"object": "database", "name": "Author", "type": "string", "default": ""},
///       {"object": "node", "name": "Slot", "type": "integer", "minimum": 0, "maximum": 255, "default": 0},
///       {"object": "message", "name": "Kind", "type": "enumeration", "values": ["A", "B"], "default": "A"}
///     ],
///     "nodes": [
///       {"name": "Radio", "attributes": {"Slot": 4}}
///     ],
///     "messages": [
///       {"identifier": 74565, "extended": true, "name": "RadioState", "length": 2, "node": "Radio",
///        "attributes": {"Kind": "B"},
///        "signals": [
///          {"name": "Level", "start_bit": 7, "length": 8, "byte_order": "big_endian", "signed": false},
///          {"name": "On", "start_bit": 8, "length": 2, "byte_order": "little_endian", "signed": false, ...}
///        ]}
///     ]
///     }
///
/// Where the dots are, a signal has up to three more keys, in this order: `"values": [[0, "Off"], [1, "On"]]`
/// when it has value descriptions, `"multiplexor": true` when it is a multiplexor and
/// `"multiplexer_value": 3` when it is multiplexed. Behind them stands its scaling if it has one:
/// `"factor": 0.1, "minimum": -12.5, "maximum": 12.5, "step": 0.5, "unit": "dB"`, less what is not known.
///
/// - Everything stands in the order of creation, attribute values in the order in which they were first set,
///   value descriptions in the order of their list.
/// - "attributes" has only the values that were set: texts and numbers as such, an enumeration value as its
///   name. One whose index is not in the list of names is written as the definition's default.
/// - "identifier" is the number without the extended mark, which is "extended".
/// - "node" is null for a message that no node sends.
/// - An empty list is `[]` and an object without keys `{}`, on the line of its key.
/// - A name that was cut at 32 bytes within a character is written without the rest of that character.

#pragma once

namespace kestrel {

class AtomicFile;
class Database;

/// Writes the database to an open file, which the caller commits. A failed write shows in the file.
void WriteVorn(const Database& database, AtomicFile& file);

}  // namespace kestrel
