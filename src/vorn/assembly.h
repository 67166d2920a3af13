/// Databases put together of the records of others.

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "kestrel/database.h"
#include "kestrel/database_builder.h"
#include "kestrel/model_text.h"

namespace vorn {

/// Copies records into a new database, in the order of the calls. Functions throw `kestrel::BadRecord` for
/// attribute values that its definitions do not allow.
class Assembly {
  public:
    void SetName(const std::string& name) { builder_.SetName(name); }
    void Add(const kestrel::AttrDef& definition);
    /// Attributes of the database itself; later values replace earlier ones.
    void SetAttributes(const kestrel::AttrValues& attributes);
    /// The same, as far as there is no value yet.
    void SetMissingAttributes(const kestrel::AttrValues& attributes);
    void Add(const kestrel::Node& node);
    /// A message that the node of this name sends, or none.
    void Add(const kestrel::Message& message, const std::optional<std::string>& node);

    std::unique_ptr<kestrel::Database> Take() { return builder_.Take(); }

  private:
    void Copy(const kestrel::AttrValues& from, AttrObject object, kestrel::AttrValues& to);
    void Copy(const kestrel::Signal& signal, kestrel::Message& message);

    kestrel::DatabaseBuilder builder_;
    kestrel::ValueTexts values_;
};

/// The name of the node that sends the message, which may be empty; nothing without a node.
std::optional<std::string> SenderOf(const kestrel::Message& message);

}  // namespace vorn
