// A panel on the screen: its fields as a form, its grids, its lists, its commands as buttons, and beside them what the
// panel has to be looked at. One view for every dialog and page; it changes the panel only as a person can.
#pragma once
#include <QWidget>
#include <functional>

#include "model/controls/panel.h"
#include "ui/qt/commandtext.h"

class CFieldView;
class CGridView;
class CListView;
class CPreviewView;
class CProblemLine;
class QBoxLayout;
class QFormLayout;
class QLabel;
class QPushButton;
class QSplitter;

class CPanelView : public QWidget {
 public:
  struct SActions {
    std::function<void(const char* command)> press;  // of the panel or of the dialog around it
    std::function<void()> entered;                   // a person changed something
  };
  /// `letters` are those that the window around the panel has taken.
  CPanelView(CPanel& panel, CMnemonics letters, SActions actions, QWidget* parent);

  CPanel& Panel() const { return m_panel; }
  /// Takes over what is still being edited; false when an edit cannot be closed.
  bool CommitEdits();
  /// Whether a person has changed what an open editor of a grid holds.
  bool HasChangedEdit() const;
  /// Shows the panel as it is now.
  void Refresh();
  /// Brings the cell or field at fault to the front, in edit and marked, and shows the reason below it.
  void ShowProblem(const QString& reason);
  void ClearProblem();
  /// Opens the cell that the cursor of the panel's grid stands on.
  void EditFocusCell();
  /// The present rows of its grids.
  int RowCount() const;
  /// What takes the keyboard, as Tab goes through it: fields, grids, lists, buttons, and what is drawn.
  std::vector<QWidget*> InTabOrder() const;
  /// In which all columns of its grids are seen beside what is drawn.
  int WantedWidth() const;
  /// Gives the keyboard to where work begins.
  void FocusFirst();
  bool IsEmpty() const;
  /// Those of the window, and those that the panel took.
  const CMnemonics& Letters() const { return m_letters; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct SFieldRow {
    CFieldView* view;
    QLabel* label;  // null where the editor has it
    CTextId id{};   // of the text that is shown
    QString text{};
  };
  struct SGridBlock {
    CEditGrid* grid;
    CGridView* view;
  };
  struct SButton {
    const char* command;
    QString text;
    QPushButton* button = nullptr;
  };
  QWidget* MakeForm();
  void Entered(const CFormField& field);
  int BodyWidth() const;
  void ShowLabel(SFieldRow& row);
  QWidget* MakeButtons();
  /// Shows the commands as they can be pressed now, and what is drawn.
  void RefreshBeside();
  void AddGrids(QBoxLayout& column);
  void AddLists(QBoxLayout& column);
  bool HasTwoLists() const { return m_panel.Lists().size() == 2; }
  SGridBlock* FocusGrid();

  CPanel& m_panel;
  CMnemonics m_letters;
  SActions m_actions;
  QFormLayout* m_form = nullptr;
  std::vector<SFieldRow> m_fields;
  std::vector<SGridBlock> m_grids;
  const CGridView* m_upToDate = nullptr;  // the grid that a person has just changed
  std::vector<CListView*> m_lists;
  std::vector<SButton> m_buttons;
  CProblemLine* m_formProblem = nullptr;
  const CFormField* m_atFault = nullptr;  // the field that the line below the form is about
  QSplitter* m_split;
  QWidget* m_body;  // all but what is drawn
  CPreviewView* m_preview;
  bool m_isSplitByPerson = false;
};
