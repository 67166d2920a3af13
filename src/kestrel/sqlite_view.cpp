#include "kestrel/sqlite_view.h"

namespace kestrel {
namespace {

constexpr const char* kMessageColumns = R"(CREATE VIEW signals AS
SELECT iif(message.identifier < 0x1000000,
           printf('%02X.%03X.%X', message.identifier >> 16, message.identifier >> 4 & 0xFFF, message.identifier & 0xF),
           '') AS address,
       coalesce(attributes.fblock, defaults.fblock) AS fblock,
       coalesce(attributes.function, defaults.function) AS function,
       coalesce(attributes.optype, defaults.optype) AS optype,
       message.name AS message,
       printf('0x%X', message.identifier) AS identifier,
       message.length AS length,
       coalesce(attributes.layout, defaults.layout) AS layout,
       node.name AS node,
       signal.name AS signal,
       signal.start_bit AS start_bit,
       signal.length AS bits,
       signal.byte_order AS byte_order,
       signal.signed AS signed,
       ifnull('m' || signal.multiplexer_value, '') || iif(signal.multiplexor, 'M', '') AS multiplexing,
)";
constexpr const char* kScalingColumns =
    "       factor, signal_scaling.minimum AS minimum, signal_scaling.maximum AS maximum, step, unit,\n";
constexpr const char* kNoScalingColumns =
    "       NULL AS factor, NULL AS minimum, NULL AS maximum, NULL AS step, NULL AS unit,\n";
constexpr const char* kTables =
    R"(       (SELECT group_concat(value || '=' || text, '; ')
        FROM (SELECT value, text FROM value_description WHERE signal_id = signal.id ORDER BY position)) AS "values"
FROM message
LEFT JOIN node ON node.id = message.node_id
LEFT JOIN signal ON signal.message_id = message.id
)";
constexpr const char* kScalingTable = "LEFT JOIN signal_scaling ON signal_scaling.signal_id = signal.id\n";
// The values of all messages at once: to look for those of each would take a pass over the table for each.
constexpr const char* kAttributes = R"(LEFT JOIN (
  SELECT message_id, max(iif(name = 'FBlock', value, NULL)) AS fblock,
         max(iif(name = 'Function', value, NULL)) AS function, max(iif(name = 'OpType', value, NULL)) AS optype,
         max(iif(name = 'Layout', value, NULL)) AS layout
  FROM message_attribute
  JOIN attribute_definition ON attribute_definition.id = definition_id
  GROUP BY message_id
) AS attributes ON attributes.message_id = message.id
JOIN (
  SELECT max(iif(name = 'FBlock', default_value, NULL)) AS fblock,
         max(iif(name = 'Function', default_value, NULL)) AS function,
         max(iif(name = 'OpType', default_value, NULL)) AS optype,
         max(iif(name = 'Layout', default_value, NULL)) AS layout
  FROM attribute_definition
  WHERE object = 'message'
) AS defaults
ORDER BY message.id, signal.id;
)";

}  // namespace

std::string SqliteSignalsView(bool hasScalings) {
    std::string view = kMessageColumns;
    view += hasScalings ? kScalingColumns : kNoScalingColumns;
    view += kTables;
    view += hasScalings ? kScalingTable : "";
    return view + kAttributes;
}

}  // namespace kestrel
