#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "catalog/child_list.h"
#include "catalog/param.h"
#include "import/names.h"

namespace tarvex {

/// The parameters of a record or stream case, of which there may be thousands. While they are checked each
/// one is looked for by name, so the list has an index for as long as that takes.
class ParamList : public ZMTChildList<ZMTParam> {
  public:
    ZMTParam* FindByName(const std::string& name) const override;

  protected:
    /// Resolves the parameters in order and deletes those that fail, without a message.
    void ResolveParams(ImportContext& context);

  private:
    /// Slots by the names of the parameters that they hold, the lowest of each name.
    using Index = std::unordered_map<std::string, unsigned, NameHash, NameEqual>;

    std::unique_ptr<Index> MakeIndex() const;

    std::unique_ptr<Index> index_;  // only while the parameters look for each other
};

}  // namespace tarvex
