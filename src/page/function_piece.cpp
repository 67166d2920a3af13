#include "page/function_piece.h"

#include "kestrel/keyed_hash.h"
#include "page/function_data.h"
#include "page/json_text.h"
#include "page/param_data.h"

namespace tarvex::page {

std::string FunctionPiece::Json() const {
    kestrel::KeyedMap<std::string, std::size_t> numbers;
    JsonText params;
    const auto numberOf = [&](const ZMTParam& param) {
        const auto [found, isNew] = numbers.try_emplace(ParamData(param), numbers.size());
        if (isNew) {
            params.Json(found->first);
        }
        return found->second;
    };
    JsonText functions;
    for (const FunctionPart& part : parts_) {
        functions.Json(FunctionData(reading_, part, numberOf));
    }
    return "{\"params\":[" + params.All() + "],\"functions\":[" + functions.All() + "]}";
}

}  // namespace tarvex::page
