// The base of the pages of the technology dialog: rows in grids, the units of their lengths, and Apply.
//
// A page has one grid or several; what stands in each is its rows' (CGridRows). Apply is written once, here: it brings
// the rows up to date, judges all of them and then the page as a whole, asks what has to be asked, and writes. The
// first refusal ends it: the message is shown, the cursor stands in the cell at fault, and nothing has been written,
// save where a page is judged and written row by row.
#pragma once
#include "model/controls/sheet.h"
#include "model/design/design.h"
#include "model/services/evt.h"
#include "technology/gridrows.h"

/// When the layout of the grids is kept.
enum class ELayout { AfterWriting, BeforeWriting };

struct STechPageOptions {
  CTextId title{};
  ELayout layout = ELayout::AfterWriting;
  bool rowByRow = false;  // a refused row leaves those above it written; without checks of the page as a whole
  bool redraws = false;   // the whole design is drawn anew after Apply and after an import
  CTextId writeLevel{};   // the undo level around the writing, which a failure takes back, and around an import
};

class CTechDialogPage : public CPropertyPagePlus {
  TECHSHEET_CLASS(CTechDialogPage, CPropertyPagePlus)
  CTechDialogPage(CDesign& design, const STechPageOptions& options);

  CDesign& Design() const { return m_design; }
  CEditGrid& Grid() { return m_parts.front()->Grid(); }  // the first one
  const CEditGrid& Grid() const { return m_parts.front()->Grid(); }
  /// Lengths are shown and typed in these units, and those stand beside them.
  const CUnits& UserUnits() const { return m_units; }
  const CUnits& SecondUnits() const { return m_units2; }

  void OnInitDialog() override;
  void OnSetActive() override;
  bool OnApply() override;

  /// Everything that is wrong with the design as it stands, names included, and what Apply would ask and say of it.
  /// Nothing is written, nobody is asked.
  CFindings Survey();
  /// Appends what the checks of the whole page find, rows as they stand.
  void JudgeWhole(CFindings& findings) const { CheckAll(findings); }
  /// What a finding of a survey says, with the name of its row where its own text has none.
  static CString SurveyText(const SFinding& finding);

  /// Reads a length typed into a cell: a plain number in the page's units in the editions that want one, otherwise with
  /// any unit behind it. False, with `dsu` untouched and the last error set, when it does not parse.
  bool ParseLength(const CString& text, int& dsu) const;
  /// Takes findings in order and asks the questions among them, save those that are answered: an answer about a field
  /// stays with its row, or with the form, until the field changes. The first finding that is a refusal, or was
  /// answered Cancel or No; null when all is well.
  using AnswersOf = std::function<std::vector<SAnswer>*(const SFinding& question)>;  // null: always asked
  static const SFinding* Accept(const CFindings& findings, const AnswersOf& answersOf);
  /// The answers that stay with the row of a question; null for a question about no field of a row.
  std::vector<SAnswer>* AnswersOfRow(const SFinding& question) const;
  /// Says why a finding refuses; nothing of a question, which has been asked.
  static void Report(const SFinding& finding);
  /// A person edited a row.
  void EditedRows() { SetModified(); }

 protected:
  /// Gives the page one more grid; `rows` lives as long as the page.
  void AddRows(CGridRows& rows);
  /// The rules between rows, after those of each of them; `rows` of the page have the values.
  virtual void CheckAll(CFindings&) const {}
  /// After everything was written, by Apply or by an import: who else has to hear of it.
  virtual void Announce() {}
  /// Announces, and has the design drawn anew.
  void FinishWriting();

  /// Edits a cell as a person does; the way by which commands of the page change a cell.
  bool EditCell(CGridRows& rows, int row, int col, const SInput& input);
  /// Whether the focus cell of the grid is a length that can be edited.
  static bool IsLengthFocused(const CGridRows& rows);
  /// Opens the calculator on the focus cell.
  void OnCalculator(CGridRows& rows);
  void OnExport(CGridRows& rows, CTextId proposed);
  void OnImport(CGridRows& rows);

  CDesign& m_design;
  /// Says what is refused and puts the cursor there; always false.
  bool Refuse(const SFinding& finding);

 private:
  void ClearProblems();
  void MarkProblems();
  void OnUnitsChanged();
  void Judge(CFindings& findings, EJudged judged);
  std::optional<SFinding> Write(const CFindings& findings, const SFinding* stop);
  std::optional<SFinding> WriteParts(const CFindings& findings);
  std::optional<SFinding> WriteInLevel(const CFindings& findings);
  void SaveLayout() const;

  STechPageOptions m_options;
  bool m_hasProblems = false;  // some cell shows one
  std::vector<CGridRows*> m_parts;
  CUnits m_units;
  CUnits m_units2;
  CEvt::CSubscription m_subscription;
};
