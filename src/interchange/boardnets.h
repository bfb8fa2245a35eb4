// The nets of a board file: what declares them, and how its items refer to them.
//
// A table at the start gives each net a code, and items refer to the codes. Boards of the newest formats lack the
// table, and their items refer by name, which stands in quotation marks.
#pragma once
#include <unordered_map>
#include <vector>

#include "interchange/importsummary.h"
#include "interchange/sexpression.h"
#include "model/design/design.h"

class CBoardNets {
 public:
  struct SNet {
    CNet* net = nullptr;   // null: no net
    std::size_t rule = 0;  // of its net class, an index
  };

  /// Finds the nets that the table or items of a board declare. The summary tells of nets that the table lacks.
  void Collect(CSNode board, CImportSummary& summary);
  /// The names of the nets, in the order in which they are declared, as the file has them.
  const std::vector<std::string_view>& Names() const { return m_names; }
  /// Makes the nets in `design`. `rules` has an index for each net, `classes` a class for each index, `colours` those
  /// of some nets by name.
  void AddTo(CPcbDesign& design, CImportNames& names, const std::vector<std::size_t>& rules,
             const std::vector<CNetClass*>& classes, const std::unordered_map<CString, CColour>& colours);

  /// The net to which a list (net 3 ...) refers; no net where nothing declares it.
  SNet Find(CSNode list) const;

 private:
  void ReadTable(CSNode board);
  void ReadDeclaration(CSNode item, CImportSummary& summary);
  void Declare(std::int64_t code, std::string_view name) { m_byCode.emplace(code, Declare(name)); }
  std::size_t Declare(std::string_view name);

  std::vector<std::string_view> m_names;
  std::vector<SNet> m_nets;                                    // by index
  std::unordered_map<std::int64_t, std::size_t> m_byCode;      // indices
  std::unordered_map<std::string_view, std::size_t> m_byName;  // indices
};
