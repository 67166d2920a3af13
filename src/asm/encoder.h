/// From values to the bytes of messages, with a catalog.

#pragma once

#include "asm/asm_value.h"
#include "asm/scalars.h"
#include "catalog/catalog.h"
#include "disasm/item_list.h"
#include "params/stream_case.h"

namespace tarvex {

class ZMTParamCaseStream;

/// Encodes the parameters of operations. What selects others selects them as in the decoder, which reads
/// along.
class Encoder {
  public:
    /// With `isForced` values may be out of range and off the step.
    explicit Encoder(bool isForced) : isForced_(isForced) {}

    /// The data of a message of the operation with these values, each parameter's once. `end`: where the line
    /// ends, for what is missing. Nothing on success, else what is wrong.
    std::optional<AsmFault> Encode(const ZMTOperation& operation, const std::vector<AsmField>& values,
                                   const AsmPlace& end, AsmBytes& out);

  private:
    using List = ZMostParameterListBaseInfo;
    class Given;

    bool Fail(std::string text, const AsmPlace& place);
    bool FailUnused(const AsmField& unused, const Given& given);
    bool CheckUsed(const Given& given);
    bool Take(const ZMTParam& param, AsmResult result);
    bool EncodeNamed(const ZMTParam& param, Given& given, unsigned entry, List& list);
    bool EncodeParam(const ZMTParam& param, const AsmValue& value, List& list);
    bool EncodeContent(const ZMTParam& param, const AsmValue& value, List& list);
    bool EncodeArray(const ZMTParamArray& array, const AsmValue& value, List& list);
    bool EncodeRecord(const ZMTParamRecord& record, const AsmValue& value, List& list);
    bool EncodeStream(const ZMTParamCaseStream& stream, const AsmValue& value, List& list);
    bool EncodeCase(const ZMTParamStreamCase& streamCase, const AsmValue& value, List& list);
    bool EncodeRepetitions(const ZMTParamStreamCase& streamCase, Given& given, List& list);
    bool EncodeSignals(const ZMTParamStreamCase& streamCase, Given& given);
    bool EncodeClassified(const ZMTParamClassifiedStream& stream, const AsmValue& value);
    bool EncodeLength(const ZMTParam& param, const AsmValue& value, std::size_t begin,
                      std::size_t lengthBytes, std::uint32_t most);
    bool AppendRaw(const AsmValue& value, std::string_view text);

    bool isForced_;
    AsmBytes bytes_;
    std::optional<AsmFault> fault_;
};

}  // namespace tarvex
