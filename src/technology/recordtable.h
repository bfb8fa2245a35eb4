// The rows of a page of records with all that Apply, files and forms need of them: checks in order, the writing of
// rows, delimited files.
//
// Checks run over the rows as they stand; the rules are the page's. A row is what checks see of it (SCheckedRow), and
// the table is what it stands among: the other present rows.
#pragma once
#include <set>

#include "technology/recordrows.h"

class CRecordTable final : public CRecordRows, public CRowContext {
 public:
  using CRecordRows::CRecordRows;

  /// A row as checks see it, with its own values or with others. Row 0 stands for a row to come, under `ownerRow` where
  /// another owns it.
  SCheckedRow Checked(int row) const;
  SCheckedRow Checked(int row, const CRecordBase& values, int ownerRow) const;
  /// The present rows of the records of the page, not of those that they own.
  auto PresentRecords() const {
    return PresentRows() | std::views::filter([this](int row) { return !m_grid.Row(row).IsOwned(); }) |
           std::views::transform([this](int row) { return Checked(row); });
  }
  /// Everything that Apply would find of one present row.
  CFindings JudgeRow(int row) const;
  /// What the form of a row finds: its name, where it is another one, and its values.
  CFindings JudgeDraft(const SCheckedRow& draft) const;
  /// The texts of one row that do not parse.
  CFindings JudgeTexts(int row) const;
  /// Whether a new record may have that name. Styles of another design that are built in there come as such.
  bool IsNewName(const CString& name) const;

  // ---- CGridRows
  void Prepare() override;
  void Judge(CFindings& findings, EJudged judged) override;
  std::optional<SFinding> Write(const CFindings& findings, int before = INT_MAX) override;
  std::unique_ptr<CKept> Keep() const override;
  void Restore(std::unique_ptr<CKept> kept) override;
  void AfterWriting() override;
  std::vector<SFileTitle> FileTitles() const override;
  void Export(CCsvWriter& file) const override;
  bool Import(CReportFile& report) override;

  // ---- CRowContext
  std::span<const SOther> All(const SCheckedRow& row) const override;
  CString NumberOf(const SCheckedRow& row) const override { return RowText(row.row); }
  const CRecordBase* OwnerOf(const SCheckedRow& row) const override;
  const CRecordBase& SurvivorOf(const CRecordBase& record) const override { return Merges().SurvivorOf(record); }

 private:
  void ShowUndeletable();
  void ShowIfKept(int row, CRecordBase& record);
  void SettleRow(int row);
  void JudgeOne(const SCheckedRow& row, CFindings& findings, EJudged judged) const;
  void JudgeName(const SCheckedRow& row, CFindings& findings, EJudged judged) const;
  void JudgeCells(const SCheckedRow& row, CFindings& findings) const;
  bool IsNameOfForm(const SCheckedRow& draft) const;
  void AddNameError(const SCheckedRow& row, const CString& name, CFindings& findings) const;
  std::set<std::string_view> SharedNames() const;
  bool HasNewNames() const;
  std::optional<SFinding> TakeOut(int row);
  void WriteRow(int row, std::size_t place);
  SFinding StaysInUse(int row);

  mutable std::set<std::string_view> m_shared;          // names that present rows share, while rows are judged
  mutable std::vector<SOther> m_others, m_ownedOthers;  // present rows, gathered when a check first asks
  mutable bool m_othersKnown = false;
  bool m_isJudging = false;  // no draft goes meanwhile but by settling
};
