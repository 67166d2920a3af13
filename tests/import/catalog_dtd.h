#pragma once

#include <string>
#include <string_view>

namespace tarvex::test {

/// A DTD for the catalogs of these tests. "FBlock" and "Definition" hold elements only; a "TString" without
/// "TypeRef" gets "type_string", one without "MaxSize" gets 10.
extern const char* const kCatalogDtd;

/// The catalog with a document type declaration in front of the document element; `declaration` is what
/// stands after "<!DOCTYPE FunctionCatalog ".
std::string WithDoctype(std::string catalog, std::string_view declaration,
                        std::string_view xmlDeclaration = R"(<?xml version="1.0" encoding="UTF-8"?>)");

}  // namespace tarvex::test
