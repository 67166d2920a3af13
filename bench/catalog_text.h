#pragma once

#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>

namespace tarvex::bench {

/// What a generated catalog looks like. The same settings give the same bytes.
struct CatalogPlan {
    std::uint64_t bytes = std::uint64_t{20} << 20;  ///< Size to reach; the last function may exceed it.
    unsigned blocks = 100;                          ///< Function blocks, 1 to 256.
    std::uint64_t seed = 1;
    bool withDoctype = false;  ///< Declare the document type "fcat.dtd".
};

/// Writes a catalog in the shape that car catalogs have: long descriptions, the same few low functions in
/// every block, all function classes and data types, errors shared by reference. Nothing is kept in memory.
class CatalogText {
  public:
    CatalogText(const CatalogPlan& plan, std::FILE* out);

    void Write();

  private:
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
    std::string EnumType(unsigned values);
    std::string Words(unsigned count);
    std::string Name();
    unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    void Put(std::string_view text);
    void Line(unsigned indent, std::string_view text);

    CatalogPlan plan_;
    std::FILE* out_;
    std::mt19937_64 random_;
    std::uint64_t written_ = 0;
};

}  // namespace tarvex::bench
