/// Where parameters are handed to when a message is taken apart.

#pragma once

#include <cstdint>
#include <span>

namespace tarvex {

class ZMTParamArray;
class ZMTParamBitField;
class ZMTParamBoolField;
class ZMTParamClassifiedStream;
class ZMTParamEnum;
class ZMTParamFktIDBitStream;
class ZMTParamNumber;
class ZMTParamRecord;
class ZMTParamShortStream;
class ZMTParamStream;
class ZMTParamStreamCase;
class ZMTParamStreamSignal;
class ZMTParamString;
class ZMTParamVoid;

/// Takes the parts of a message one behind the other, as the parameters describe them: ZMTNode::Disassemble
/// calls the one for its kind. `message` is the whole message. False when it does not fit the parameter.
class ParamDecoder {
  public:
    ParamDecoder() = default;
    ParamDecoder(const ParamDecoder&) = delete;
    ParamDecoder& operator=(const ParamDecoder&) = delete;
    virtual ~ParamDecoder() = default;

    using Bytes = std::span<const std::uint8_t>;

    virtual bool Decode(const ZMTParamArray& array, Bytes message) = 0;
    virtual bool Decode(const ZMTParamBitField& field, Bytes message) = 0;
    /// False: a bit has no bytes of its own, its field decodes it.
    virtual bool Decode(const ZMTParamBoolField& bit, Bytes message) = 0;
    virtual bool Decode(const ZMTParamClassifiedStream& stream, Bytes message) = 0;
    virtual bool Decode(const ZMTParamEnum& enumeration, Bytes message) = 0;
    virtual bool Decode(const ZMTParamFktIDBitStream& stream, Bytes message) = 0;
    virtual bool Decode(const ZMTParamNumber& number, Bytes message) = 0;
    virtual bool Decode(const ZMTParamRecord& record, Bytes message) = 0;
    virtual bool Decode(const ZMTParamShortStream& stream, Bytes message) = 0;
    virtual bool Decode(const ZMTParamStream& stream, Bytes message) = 0;
    /// False: a case has no bytes of its own, its stream decodes it.
    virtual bool Decode(const ZMTParamStreamCase& streamCase, Bytes message) = 0;
    /// False: a signal is a part of its case, which decodes it.
    virtual bool Decode(const ZMTParamStreamSignal& signal, Bytes message) = 0;
    virtual bool Decode(const ZMTParamString& string, Bytes message) = 0;
    virtual bool Decode(const ZMTParamVoid& voidParam, Bytes message) = 0;
};

}  // namespace tarvex
