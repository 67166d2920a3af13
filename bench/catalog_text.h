#pragma once

#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>

namespace tarvex::bench {

/// What a catalog has most of.
enum class Shape {
    Realistic,        ///< All classes and types, and the same low functions in every block.
    Plain,            ///< The same in texts of at most 2 KB that no reference breaks up.
    OneName,          ///< Parameters called "Value", several to an operation.
    Enumerations,     ///< Enumerations of 5,000 values.
    SmallFunctions,   ///< Functions of one parameter in about 800 bytes, 1,000 to a block.
    LongDescriptions  ///< Functions described in 100 KB each.
};

/// What a generated catalog looks like. The same settings give the same bytes.
struct CatalogPlan {
    std::uint64_t bytes = std::uint64_t{20} << 20;  ///< Size to reach; the last function may exceed it.
    Shape shape = Shape::Realistic;
    unsigned blocks = 100;  ///< Function blocks, 1 to 256; small functions take as many as they need.
    std::uint64_t seed = 1;
    bool withDoctype = false;  ///< Declare the document type "fcat.dtd".
};

/// Writes a catalog that is valid under its document type. Nothing is kept in memory.
class CatalogText {
  public:
    CatalogText(const CatalogPlan& plan, std::FILE* out);

    void Write();

  private:
    void WriteBlocks();
    void WriteBlock(unsigned fBlockID, std::uint64_t endOfBlock);
    void WriteCommonFunctions();
    void WriteFunction(unsigned fktID);
    void WriteNumber(const std::string& name);
    void WriteEnumeration(const std::string& name);
    void WriteSwitch(const std::string& name);
    void WriteText(const std::string& name);
    void WriteBits(const std::string& name);
    void WriteRecord(const std::string& name);
    void WriteArray(const std::string& name);
    void WriteMethod(const std::string& name);
    void WriteTrigger(const std::string& name);
    void WriteEqualNames();
    void WriteLargeEnumeration(const std::string& name);
    void WriteSmall(const std::string& name);
    void WriteDefinition();

    void OpenFunction(unsigned fktID, const std::string& name);
    void OpenClass(std::string_view classRef, std::string_view kind, std::string_view element);
    void CloseClass(std::string_view kind, std::string_view element);
    /// A parameter with its wrappers: `letters` begin its elements ("PN", "MU"), `commands` and `reports`
    /// name operation elements separated by blanks.
    void Param(std::string_view letters, std::string_view name, unsigned pos, std::string_view commands,
               std::string_view reports, std::string_view type);
    void Get(std::string_view letters);
    void Operations(std::string_view wrapper, std::string_view elements, unsigned pos);

    std::string NumberType();
    std::string EnumType(unsigned values, unsigned largestCode = 255);
    std::string FunctionDescription();
    std::string ParamDescription();
    std::string Words(unsigned count);
    std::string Name();
    unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    /// Whether every block has the functions that blocks share.
    bool HasCommonFunctions() const { return plan_.shape == Shape::Realistic || plan_.shape == Shape::Plain; }

    void Put(std::string_view text);
    void Line(unsigned indent, std::string_view text);

    CatalogPlan plan_;
    std::FILE* out_;
    /// What an expression draws more than once stands in statements of its own, because compilers order its
    /// parts differently.
    std::mt19937_64 random_;
    std::uint64_t written_ = 0;
};

}  // namespace tarvex::bench
