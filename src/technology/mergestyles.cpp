#include "technology/mergestyles.h"

namespace {
std::int64_t Address(const CRecordBase* record) { return reinterpret_cast<std::int64_t>(record); }
}  // namespace

CMergeStyles::CMergeStyles(std::vector<SStyle> styles, const CRecordBase* proposed)
    : CDialog(Text::MergeStyles), m_styles(std::move(styles)) {
  CComboItems items;
  std::int64_t chosen = 0;
  for (const SStyle& style : m_styles) {
    if (!style.record) continue;
    items.push_back({Address(style.record), style.name});
    if (chosen == 0 || style.record == proposed) chosen = Address(style.record);
  }
  m_survivor.SetItems(std::move(items));
  m_survivor.SetValue(chosen);
  m_survivor.SetChangeHandler([this] { ShowMoves(); });
  AddField(m_survivor);
  AddList(m_moves);
  ShowMoves();
}

CRecordBase& CMergeStyles::Survivor() const { return *reinterpret_cast<CRecordBase*>(m_survivor.GetValue()); }

void CMergeStyles::ShowMoves() {
  m_moves.entries.clear();
  for (const SStyle& style : m_styles) {
    if (style.record == &Survivor()) continue;
    const CStringArray values{style.name, IntText(style.uses), m_survivor.GetText()};
    m_moves.entries.push_back({style.isBuiltIn   ? TextOf(Text::MergeKeepsBuiltIn, values)
                               : style.uses == 0 ? TextOf(Text::MergeOfUnused, values)
                                                 : TextOf(Text::MergeMovesUses, values)});
  }
  Changed();
}
