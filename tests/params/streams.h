#pragma once

#include <string>
#include <string_view>

#include "params/composites.h"
#include "params/stream.h"
#include "support/catalog_import.h"

namespace tarvex::test {

/// A "StreamParam" of that "ParamIdx", name and type.
inline std::string Member(std::string_view paramIdx, std::string_view name, std::string_view type = kText) {
    std::string xml = "<StreamParam><ParamName ParamIdx=\"";
    xml.append(paramIdx).append("\">").append(name).append("</ParamName><ParamType>").append(type);
    return xml + "</ParamType></StreamParam>";
}

/// A "StreamCase" for those coordinates.
inline std::string Case(std::string_view posX, std::string_view posY,
                        std::string_view members = Member("1", "F")) {
    std::string xml = "<StreamCase><PosDescription PosX=\"";
    xml.append(posX).append("\" PosY=\"").append(posY).append("\"/>").append(members);
    return xml + "</StreamCase>";
}

/// A "StreamCase" for those values of a selector that it does not name.
inline std::string Case(std::string_view posY) {
    return Case("#NULL#", posY);
}

/// A "TStream" of eight bytes with these cases.
inline std::string Stream(std::string_view cases) {
    std::string xml = R"(<TStream TypeRef="type_stream" Length="8">)";
    return xml.append(cases) + "</TStream>";
}

/// Imports a stream "Body" from this type element.
struct StreamImport : CompositeImport<ZMTParamStream> {
    explicit StreamImport(std::string_view typeElement)
        : CompositeImport<ZMTParamStream>("Body", typeElement) {}
};

/// Imports the only case of a stream "Body"; null when it was left out.
struct CaseImport : StreamImport {
    explicit CaseImport(std::string_view caseElement)
        : StreamImport(Stream(caseElement)), streamCase(param.GetAt(0)) {}

    const ZMTParamStreamCase* streamCase;
};

}  // namespace tarvex::test
