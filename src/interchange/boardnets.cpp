#include "interchange/boardnets.h"

#include <map>

#include "interchange/boardvalues.h"

namespace {
/// Does `work` with every item of a board that can be in a net.
template <class Work>
void ForEachItem(CSNode board, const Work& work) {
  for (const CSNode item : board) {
    work(item);
    if (item.Tag() == "footprint" || item.Tag() == "module")
      for (const CSNode part : item) work(part);
  }
}
}  // namespace

void CBoardNets::Collect(CSNode board, CImportSummary& summary) {
  ReadTable(board);
  ForEachItem(board, [&](CSNode item) { ReadDeclaration(item, summary); });
  std::map<std::int64_t, std::size_t> undeclared;  // how many items refer to a code
  ForEachItem(board, [&](CSNode item) {
    const CSNode word = item.Find("net").Value(0);
    if (!word.IsWord() || word.IsQuoted()) return;
    if (const std::int64_t code = Integer(word); code != 0 && !m_byCode.contains(code)) ++undeclared[code];
  });
  for (const auto& [code, count] : undeclared) {
    const CString args[] = {IntText(code), IntText(static_cast<std::int64_t>(count))};
    summary.Say("nets", FormatText("Nothing declares the net %1, so items that are in it have no net (%2)", args));
  }
}

std::size_t CBoardNets::Declare(std::string_view name) {
  m_byName.emplace(name, m_names.size());
  m_names.push_back(name);
  return m_names.size() - 1;
}

void CBoardNets::ReadTable(CSNode board) {
  for (const CSNode row : board) {
    if (row.Tag() != "net") continue;
    const CSNode first = Word(row, 0);
    if (first.IsQuoted()) {
      if (!first.Text().empty() && !m_byName.contains(first.Text())) Declare(first.Text());
      continue;
    }
    const std::int64_t code = Integer(first);
    const std::string_view name = Word(row, 1).Text();
    if (m_byCode.contains(code)) Fault(row, "the net " + IntText(code) + " is there twice");
    if (code != 0) Declare(code, name);
  }
}

/// An item that tells the name of its net declares it, unless the table has.
void CBoardNets::ReadDeclaration(CSNode item, CImportSummary& summary) {
  const CSNode net = item.Find("net"), first = net.Value(0);
  if (!first.IsWord()) return;
  if (first.IsQuoted()) {
    if (!first.Text().empty() && !m_byName.contains(first.Text())) Declare(first.Text());
    return;
  }
  const std::int64_t code = Integer(first);
  if (code == 0 || m_byCode.contains(code)) return;
  const std::string_view name = net.Value(1) ? net.Value(1).Text() : item.Find("net_name").Value(0).Text();
  if (name.empty()) return;
  Declare(code, name);
  const CString args[] = {IntText(code), Quoted(name)};
  summary.Say("nets", FormatText("The table of nets lacks the net %1, which an item calls %2", args));
}

void CBoardNets::AddTo(CPcbDesign& design, CImportNames& names, const std::vector<std::size_t>& rules,
                       const std::vector<CNetClass*>& classes, const std::unordered_map<CString, CColour>& colours) {
  for (std::size_t i = 0; i < m_names.size(); ++i) {
    CNet* const net = design.AddNet(names.Take("net", m_names[i]), classes[rules[i]]);
    if (const auto colour = colours.find(CString(m_names[i])); colour != colours.end()) {
      net->Set(&SNetFields::useOwnColour, true);
      net->Set(&SNetFields::colour, colour->second);
    }
    m_nets.push_back({net, rules[i]});
  }
}

CBoardNets::SNet CBoardNets::Find(CSNode list) const {
  const CSNode word = Word(list);
  if (word.IsQuoted()) {
    const auto found = m_byName.find(word.Text());
    return found != m_byName.end() ? m_nets[found->second] : SNet();
  }
  const auto found = m_byCode.find(Integer(word));
  return found != m_byCode.end() ? m_nets[found->second] : SNet();
}
