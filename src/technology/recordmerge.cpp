// Merging styles in the pages of records. The rows of merged styles are hidden; their references move when the page is
// written.
#include <algorithm>

#include "technology/mergestyles.h"
#include "technology/recordpage.h"

bool CRecordPage::IsInUse(const CRecordBase& record) const { return UsesOf(record) > 0; }

int CRecordPage::UsesOf(const CRecordBase& record) const {
  int uses = record.UseCount();
  if (uses == 0 && CTechnology::IsUsed(record)) uses = 1;
  for (const auto& [merged, survivor] : m_merged)
    if (survivor == &record) uses += merged->UseCount();
  return uses;
}

const CRecordBase& CRecordPage::SurvivorOf(const CRecordBase& record) const {
  const auto at = m_merged.find(&record);
  return at == m_merged.end() ? record : *at->second;
}

std::vector<int> CRecordPage::RowsToMerge() const {
  std::vector<int> rows = m_grid.SelectedRows();
  std::erase_if(rows, [this](int row) { return m_grid.Row(row).binder != 0; });
  return rows;
}

bool CRecordPage::CanMerge() const {
  const std::vector<int> rows = RowsToMerge();
  return rows.size() > 1 && std::any_of(rows.begin(), rows.end(), [this](int row) { return m_grid.GetItemData(row); });
}

void CRecordPage::OnMerge() {
  const std::vector<int> rows = RowsToMerge();
  std::vector<CMergeStyles::SStyle> styles;
  for (const int row : rows) {
    CRecordBase* const record = m_grid.GetItemData(row);
    const bool isBuiltIn = record && record->RecordName().starts_with('[');
    styles.push_back({RowName(row), record, record ? UsesOf(*record) : 0, isBuiltIn});
  }
  const int current = CurrentRow();
  CMergeStyles dialog(styles, current ? m_grid.GetItemData(current) : nullptr);
  if (dialog.DoModal() != CDialog::kOk) return;
  CRecordBase* const survivor = &dialog.Survivor();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (m_grid.GetItemData(rows[i]) == survivor) {
      m_grid.SetFocusCell(rows[i], m_nameColumn);
      continue;
    }
    if (!dialog.Goes(styles[i])) continue;
    HideRow(rows[i]);
    CRecordBase* const gone = styles[i].record;
    if (!gone) continue;
    for (auto& [merged, target] : m_merged)
      if (target == gone) target = survivor;
    m_merged.emplace(gone, survivor);
  }
  m_grid.ClearSelection();
  RefreshMarks();
  SetModified();
}

void CRecordPage::MoveMerged() {
  if (!m_merged.empty()) m_design.Merge(m_merged);
  m_merged.clear();
}
