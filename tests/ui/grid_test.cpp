// Grids in a window, driven by keys and clicks as a person drives them.
#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>
#include <memory>

#include "model/services/application.h"
#include "model/services/registry.h"
#include "person.h"
#include "technology/layers/layerspage.h"
#include "technology/layers/layerspanspage.h"
#include "technology/layers/layertypespage.h"
#include "technology/sheet/sizesdialog.h"
#include "technology/styles/trackstylespage.h"
#include "ui/qt/tabtext.h"
#include "ui/qt/text.h"

namespace {
/// A sheet on one page, whose grid stands in a window above another control, and what a person does while it is open.
/// Pressing a command is what a dialog does with it: the panel runs it, the grid is shown anew.
class CStage : public CNoUserInterface {
 public:
  using Script = std::function<void(CStage&)>;
  CStage(const CRuntimeClass* page, const std::function<void(CPcbDesign&)>& fill, Script script)
      : m_script(std::move(script)), m_installed(*this) {
    fill(design);
    dialog = std::make_unique<CSizesDialog>(&design, Text::Technology, page);
    dialog->DoModal();
  }
  int DoModal(CDialog& shown) override {
    if (&shown != dialog.get()) return opened.push_back(shown.GetTitle()), 0;
    Show();
    m_script(*this);
    testers.clear();
    view.reset();
    window.reset();
    CString why;
    if (dialog->IsOpen()) dialog->Press("Cancel", why);
    return 0;
  }
  void Show() {
    window = std::make_unique<QWidget>();
    auto* const column = new QVBoxLayout(window.get());
    CPanel& panel = dialog->ActivePanel();
    grid = panel.FindGrid("grid");
    view = std::make_unique<CGridView>(panel, *grid, window.get());
    view->onCommand = [this](const char* command) {
      CString why;
      pressed.push_back(command);
      dialog->Press(command, why);
      view->Refresh();
    };
    view->onChanged = [this] { ++entered; };
    column->addWidget(view.get());
    after = new QLineEdit(window.get());
    column->addWidget(after);
    window->resize(1000, 500);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    view->Table().setFocus();
    auto& shown = static_cast<CGridFilter&>(*view->Table().model());
    testers.push_back(std::make_unique<QAbstractItemModelTester>(&shown.Model()));
    testers.push_back(std::make_unique<QAbstractItemModelTester>(&shown));
  }

  // ---- What a person does
  CGridTable& Table() { return view->Table(); }
  QWidget* Editor() { return Table().Delegate().Editor(); }
  void Go(int row, int col) { Table().GoTo(Table().model()->index(row - 1, col)); }
  void Type(const char* text) {
    Keys(QString::fromUtf8(text).left(1));  // opens the editor, which takes the others
    Keys(QString::fromUtf8(text).mid(1));
  }
  void Enter(const char* text) {
    Type(text);
    Key(Qt::Key_Return);
  }
  void Select(int top, int left, int bottom, int right) {
    Go(top, left);
    const QAbstractItemModel& model = *Table().model();
    Table().selectionModel()->select(QItemSelection(model.index(top - 1, left), model.index(bottom - 1, right)),
                                     QItemSelectionModel::ClearAndSelect);
  }
  void Paste(const char* text) {
    QApplication::clipboard()->setText(QString::fromUtf8(text));
    Key(Qt::Key_V, Qt::ControlModifier);
  }
  QString Copy() {
    QApplication::clipboard()->clear();
    Key(Qt::Key_C, Qt::ControlModifier);
    return QApplication::clipboard()->text();
  }
  /// The menu that the right button opens on the headers.
  QMenu* HeaderMenu() {
    QHeaderView& header = *Table().horizontalHeader();
    QContextMenuEvent wanted(QContextMenuEvent::Mouse, {}, header.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(header.viewport(), &wanted);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }

  // ---- What there is
  QString Where() { return QStringLiteral("%1,%2").arg(grid->GetFocusCell().row).arg(grid->GetFocusCell().col); }
  QString Text(int row, int col) const { return ToQt(grid->GetItemText(row, col)); }
  /// A column of all present rows.
  QString Column(int col) const {
    QStringList texts;
    for (int row = 1; row < grid->GetRowCount(); ++row)
      if (grid->IsPresent(row)) texts.push_back(Text(row, col));
    return texts.join(u'|');
  }
  /// The same as the table shows it.
  QString Shown(int col) {
    QStringList texts;
    for (int row = 0; row < Table().model()->rowCount(); ++row)
      texts.push_back(Table().model()->index(row, col).data(CGridModel::FilterRole).toString());
    return texts.join(u'|');
  }
  QString Notice() {
    QStringList texts;
    for (const QLabel* label : view->findChildren<QLabel*>())
      if (label->isVisible() && label->wordWrap()) texts.push_back(label->text());
    return texts.join(u'|');
  }

  CPcbDesign design;
  std::unique_ptr<CSizesDialog> dialog;
  std::unique_ptr<QWidget> window;
  std::unique_ptr<CGridView> view;
  std::vector<std::unique_ptr<QAbstractItemModelTester>> testers;
  CEditGrid* grid = nullptr;
  QLineEdit* after = nullptr;
  std::vector<std::string> pressed;
  CStringArray opened;
  int entered = 0;

 private:
  Script m_script;
  CUserInterfaceScope m_installed;
};

// Columns of the Layer types page.
enum ETypeColumn { kUsed, kName, kUsage, kSurfacePads, kAllLayerPads, kOversizeType = 8, kOversize = 9, kGap = 12 };

CLayerType* AddType(CPcbDesign& design, const char* name, int usage) {
  CLayerType type;
  type.SetName(name);
  type.SetUsage(usage);
  type.Set(&SLayerTypeFields::surfacePads, usage == ELayerUsage::Electrical);
  type.Set(&SLayerTypeFields::allLayerPads, usage == ELayerUsage::Electrical);
  return design.AddLayerType(&type);
}
/// Rows: 1 Mask, 2 Copper, 3 Notes, 4 Assembly. Copper is electrical: its pads are fixed.
void FillTypes(CPcbDesign& design) {
  AddType(design, "Mask", ELayerUsage::SolderMask);
  AddType(design, "Copper", ELayerUsage::Electrical);
  AddType(design, "Notes", ELayerUsage::Documentation);
  AddType(design, "Assembly", ELayerUsage::Documentation);
  design.ResetUndoLevels();
}
void OnTypes(const CStage::Script& script, const std::function<void(CPcbDesign&)>& fill = FillTypes) {
  const CStage stage(CLayerTypesPage::GetThisClass(), fill, script);
}
/// The built-in layer, Top, Bottom; then Glue and Text.
void OnLayers(const CStage::Script& script) {
  const auto fill = [](CPcbDesign& design) {
    for (const char* name : {"Glue", "Text"})
      design.AddLayer(name, nullptr, ELayerSide::All, ELayerBias::None, nullptr)->SetUsage(ELayerUsage::Documentation);
    AddType(design, "Copper", ELayerUsage::Electrical);
    design.ResetUndoLevels();
  };
  const CStage stage(CLayersPage::GetThisClass(), fill, script);
}
}  // namespace

class GridTest : public QObject {
  Q_OBJECT
 private slots:
  void init() {
    InstallSettingsStore(nullptr);
    CApplication::SetEditions({"Pellam"});
    QLocale::setDefault(QLocale::c());
  }

  void KeysOpenTheEditorThatTheCellAsksFor() {
    struct SCase {
      const char* what;
      int col;
      Qt::Key key;
      const char* editor;
    };
    constexpr SCase kCases[] = {{"F2, text", kName, Qt::Key_F2, "QLineEdit"},
                                {"Return, text", kName, Qt::Key_Return, "QLineEdit"},
                                {"a letter, text", kName, Qt::Key_A, "QLineEdit"},
                                {"Return, choice", kUsage, Qt::Key_Return, "QComboBox"},
                                {"F2, check box", kSurfacePads, Qt::Key_F2, "QCheckBox"},
                                {"a letter, check box", kSurfacePads, Qt::Key_A, nullptr},
                                {"F2, computed", kUsed, Qt::Key_F2, nullptr},
                                {"F2, disabled", kOversize, Qt::Key_F2, nullptr}};
    OnTypes([&](CStage& s) {
      for (const SCase& one : kCases) {
        s.Go(1, one.col);
        Key(one.key);
        QVERIFY2((s.Editor() != nullptr) == (one.editor != nullptr), one.what);
        if (!s.Editor()) continue;
        QVERIFY2(s.Editor()->inherits(one.editor), one.what);
        Key(Qt::Key_Escape);
      }
    });
  }

  void TypingReplacesTheTextAndReturnEntersIt() {
    OnTypes([](CStage& s) {
      s.Go(3, kName);
      s.Type("Remarks");
      QCOMPARE(s.Text(3, kName), "Notes");  // not yet
      Key(Qt::Key_Return);
      QCOMPARE(s.Text(3, kName), "Remarks");
      QVERIFY(!s.Editor());
      QCOMPARE(QApplication::focusWidget(), &s.Table());
      QVERIFY(s.dialog->IsModified());
      QCOMPARE(s.entered, 1);
      QTest::mouseDClick(s.Table().viewport(), Qt::LeftButton, {},
                         s.Table().visualRect(s.Table().model()->index(0, kName)).center());
      s.Type("Resist");
      QVERIFY(s.view->CommitEdit());  // as a command does before it runs
      QCOMPARE(s.Text(1, kName), "Resist");
    });
  }

  void OpeningAndClosingAnEditorChangesNothing() {
    OnTypes(
        [](CStage& s) {
          for (const int col : {int{kName}, int{kUsage}, int{kSurfacePads}, int{kOversizeType}, int{kOversize}}) {
            s.Go(1, col);
            Key(Qt::Key_F2);
            QVERIFY(s.Editor());
            Key(Qt::Key_Return);
            QVERIFY(!s.Editor());
          }
          QVERIFY(!s.dialog->IsModified());
          QCOMPARE(s.grid->GetValue(1, kOversize), 123'456'789);  // though fewer digits are shown
        },
        [](CPcbDesign& design) {
          CLayerType* const type = AddType(design, "Mask", ELayerUsage::SolderMask);
          type->Set(&SLayerTypeFields::oversizeType, {EOversizeType::ByAmount});
          type->SetOversize(123'456'789);
          design.ResetUndoLevels();
        });
  }

  void TabGoesThroughWhatCanBeEdited() {
    OnTypes([](CStage& s) {
      s.Go(2, kUsage);  // of Copper: what follows is fixed up to the oversize type
      Key(Qt::Key_F2);
      Key(Qt::Key_Tab);
      QCOMPARE(s.Where(), QStringLiteral("2,%1").arg(int{kOversizeType}));
      QVERIFY(qobject_cast<QComboBox*>(s.Editor()));
      Key(Qt::Key_Backtab, Qt::ShiftModifier);
      QCOMPARE(s.Where(), QStringLiteral("2,%1").arg(int{kUsage}));
      s.Go(1, kGap);
      Key(Qt::Key_F2);
      s.Type("0.5");
      Key(Qt::Key_Tab);  // on to the next row
      QCOMPARE(s.Where(), QStringLiteral("2,%1").arg(int{kName}));
      QCOMPARE(s.grid->GetValue(1, kGap), 500'000);
      Key(Qt::Key_Return);
      Key(Qt::Key_Tab);  // outside an edit it leaves the grid
      QCOMPARE(QApplication::focusWidget(), s.after);
    });
  }

  void KeysMoveTheCursorOfTheGrid() {
    struct SCase {
      Qt::Key key;
      Qt::KeyboardModifiers modifiers;
      const char* where;
    };
    OnTypes([](CStage& s) {
      for (const SCase& one :
           {SCase{Qt::Key_Down, {}, "3,2"}, SCase{Qt::Key_Left, {}, "2,1"}, SCase{Qt::Key_End, {}, "2,12"},
            SCase{Qt::Key_Home, Qt::ControlModifier, "1,0"}, SCase{Qt::Key_End, Qt::ControlModifier, "4,12"},
            SCase{Qt::Key_PageUp, {}, "1,2"}, SCase{Qt::Key_PageDown, Qt::ControlModifier, "2,2"}}) {
        s.Go(2, kUsage);
        Key(one.key, one.modifiers);
        QCOMPARE(s.Where(), one.where);
        QCOMPARE(s.grid->SelectedRows(), std::vector<int>{s.grid->GetFocusCell().row});
      }
    });
  }

  void KeysPressCommands() {
    OnLayers([](CStage& s) {
      s.Go(4, 1);
      Key(Qt::Key_Down, Qt::AltModifier);
      QCOMPARE(s.Shown(1), "[All layers]|Top|Bottom|Text|Glue");
      QCOMPARE(s.Where(), "5,1");  // the cursor goes with its row
      s.Type("Paste");             // an edit that is open is entered before the row moves
      Key(Qt::Key_Up, Qt::AltModifier);
      QCOMPARE(s.Shown(1), "[All layers]|Top|Bottom|Paste|Text");
      QCOMPARE(s.pressed, (std::vector<std::string>{"MoveDown", "MoveUp"}));
    });
    OnTypes([](CStage& s) {
      s.Go(2, kName);
      Key(Qt::Key_Delete);
      QCOMPARE(s.Shown(kName), "Mask|Notes|Assembly");
      QCOMPARE(s.Table().model()->headerData(1, Qt::Vertical).toString(), "2");  // as messages call the row
      s.Go(1, kGap);
      Key(Qt::Key_F4);
      QCOMPARE(s.opened.size(), std::size_t{1});
      s.Go(1, kName);
      Key(Qt::Key_F4);  // no length
      QCOMPARE(s.opened.size(), std::size_t{1});
    });
  }

  void MenuOpensAtTheCell() {
    OnTypes([](CStage& s) {
      s.Go(3, kName);
      const QRect cell = s.Table().visualRect(s.Table().currentIndex());
      Key(Qt::Key_Menu);
      auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      QVERIFY(menu);
      QVERIFY(cell.contains(s.Table().viewport()->mapFromGlobal(menu->pos())));
      const QList<QAction*> actions = menu->actions();
      const auto at = std::ranges::find_if(actions, [](QAction* one) { return PlainText(one->text()) == "Delete"; });
      QVERIFY(at != actions.end());
      (*at)->trigger();
      menu->close();
      QCOMPARE(s.Shown(kName), "Mask|Copper|Assembly");
    });
  }

  void ALengthThatDoesNotParseStaysAndSaysWhy() {
    OnTypes([](CStage& s) {
      s.Go(1, kGap);
      s.Enter("half");
      QVERIFY(!s.Editor());
      const QModelIndex cell = s.Table().model()->index(0, kGap);
      QCOMPARE(s.Text(1, kGap), "half");
      QVERIFY(cell.data(CGridModel::ProblemRole).toString().contains("half"));
      QCOMPARE(cell.data(Qt::AccessibleDescriptionRole), cell.data(CGridModel::ProblemRole));
      QCOMPARE(s.Notice(), cell.data(CGridModel::ProblemRole).toString());
      s.Enter("0.5");
      QVERIFY(cell.data(CGridModel::ProblemRole).toString().isEmpty());
      QVERIFY(s.Notice().isEmpty());
    });
  }

  void LengthsAreCopiedExactlyWithTheDecimalCommaOfTheLocale() {
    OnTypes([](CStage& s) {
      QLocale::setDefault(QLocale(QLocale::German));
      s.Go(1, kGap);
      s.Enter("0,123457");
      QCOMPARE(s.grid->GetValue(1, kGap), 123'457);
      QCOMPARE(s.Copy(), "0,123457\n");  // though fewer digits are shown
      s.Go(3, kGap);
      Key(Qt::Key_V, Qt::ControlModifier);
      QCOMPARE(s.grid->GetValue(3, kGap), 123'457);
      QLocale::setDefault(QLocale::c());
      s.Enter("0,5");
      QVERIFY2(s.grid->Cell(3, kGap).wrong, qPrintable(s.Text(3, kGap)));
    });
  }

  void ATypedValueGoesToAllSelectedRows() {
    OnTypes([](CStage& s) {
      s.Select(1, kGap, 4, kGap);
      s.Enter("0.3");
      QCOMPARE(s.Column(kGap), "0.300|0.000|0.300|0.300");
      QCOMPARE(s.grid->GetValue(4, kGap), 300'000);
      QVERIFY(s.Notice().endsWith(": 1."));  // Copper's cannot be edited
      s.Enter("no");                         // fits none of them
      QVERIFY(s.Editor());
      QCOMPARE(s.grid->GetValue(4, kGap), 300'000);
      QVERIFY(!s.view->CommitEdit());
    });
  }

  void SpaceTogglesAllSelectedCheckBoxesAndAClickOne() {
    OnTypes([](CStage& s) {
      const QString before = s.Column(kSurfacePads);
      QCOMPARE(before, "No|Yes|No|No");
      s.Select(1, kName, 4, kAllLayerPads);
      Key(Qt::Key_Space);
      QCOMPARE(s.Column(kSurfacePads), "Yes|Yes|Yes|Yes");
      QCOMPARE(s.Column(kAllLayerPads), "Yes|Yes|Yes|Yes");
      Key(Qt::Key_Space);
      QCOMPARE(s.Column(kSurfacePads), before);
      QCOMPARE(s.Column(kName), "Mask|Copper|Notes|Assembly");
    });
    OnTypes([](CStage& s) {
      const auto click = [&s](int row, int away) {
        const QRect cell = s.Table().visualRect(s.Table().model()->index(row - 1, kSurfacePads));
        QTest::mouseClick(s.Table().viewport(), Qt::LeftButton, {}, cell.center() + QPoint(away, 0));
      };
      click(1, 0);
      QCOMPARE(s.Text(1, kSurfacePads), "Yes");
      click(3, 40);  // beside the mark
      QCOMPARE(s.Text(3, kSurfacePads), "No");
      click(2, 0);  // cannot be edited
      QCOMPARE(s.Text(2, kSurfacePads), "Yes");
    });
  }

  void ComboOffersWhatTheCellCanHold() {
    OnLayers([](CStage& s) {
      s.Go(4, 2);
      Key(Qt::Key_F2);
      auto* const combo = qobject_cast<QComboBox*>(s.Editor());
      QVERIFY(combo);
      QCOMPARE(combo->count(), 2);  // none, and the one layer type
      Key(Qt::Key_Down);
      Key(Qt::Key_Return);
      QCOMPARE(s.Text(4, 2), "Copper");
      QCOMPARE(s.Text(4, 4), "Electrical");  // follows from the type
      QVERIFY(!(s.Table().model()->index(3, 4).flags() & Qt::ItemIsEditable));
      Key(Qt::Key_F2);
      Key(Qt::Key_Up);
      Key(Qt::Key_Return);
      QCOMPARE(s.Text(4, 2), "");
    });
  }

  void AColourThatIsNoneKeepsItsEditorOpen() {
    OnLayers([](CStage& s) {
      const int colour = s.grid->GetColumnCount() - 1;
      s.Go(4, colour);
      s.Enter("#12");
      QVERIFY(s.Editor());
      QVERIFY(!s.Notice().isEmpty());
      s.Enter("3456");
      QVERIFY(!s.Editor());
      QVERIFY(s.Notice().isEmpty());
      QCOMPARE(s.Text(4, colour), "#123456");
      QCOMPARE(s.Table().model()->index(3, colour).data(Qt::DecorationRole).value<QColor>(), QColor(0x123456));
    });
  }

  void TabText() {
    struct SCase {
      const char* what;
      const char* text;
      QStringList lines;  // cells between bars
    };
    const SCase cases[] = {{"cells", "a\tb\nc\td\n", {"a|b", "c|d"}},
                           {"Windows lines, no last end", "a\r\nb", {"a", "b"}},
                           {"empty cells", "\t\n\n", {"|", ""}},
                           {"quoted", "\"a\tb\"\t\"say \"\"x\"\"\"\n", {"a\tb|say \"x\""}},
                           {"line break inside", "\"a\nb\"\tc", {"a\nb|c"}},
                           {"quotation mark inside", "5\" disk", {"5\" disk"}},
                           {"never closed", "\"a\tb", {"a\tb"}},
                           {"nothing", "", {""}}};
    for (const SCase& one : cases) {
      QStringList read;
      const CTabLines cells = FromTabText(QString::fromUtf8(one.text));
      for (const QStringList& line : cells) read.push_back(line.join(u'|'));
      QVERIFY2(read == one.lines, one.what);
      QVERIFY2(FromTabText(ToTabText(cells)) == cells, one.what);
    }
  }

  void PasteRepeatsToFillTheSelection() {
    OnTypes([](CStage& s) {
      s.Select(1, kUsage, 4, kUsage);
      s.Paste("Documentation\nSolder mask\n");
      QCOMPARE(s.Column(kUsage), "Documentation|Solder mask|Documentation|Solder mask");
      s.Select(1, kUsage, 3, kUsage);  // three rows: two lines do not divide them
      s.Paste("Solder mask\nDocumentation\n");
      QCOMPARE(s.Column(kUsage), "Solder mask|Documentation|Documentation|Solder mask");
    });
  }

  void PasteAppendsRowsAndSkipsWhatCannotBeEdited() {
    OnTypes([](CStage& s) {
      s.Go(4, kName);
      s.Paste("Last\tDocumentation\tYes\nNew\tElectrical\tNo\nNewer\tSolder mask\tTRUE\n");
      QCOMPARE(s.Shown(kName), "Mask|Copper|Notes|Last|New|Newer");
      QCOMPARE(s.Column(kUsage), "Solder mask|Electrical|Documentation|Documentation|Electrical|Solder mask");
      // The usage locks the pads of a copper layer, so that cell is left as it is.
      QCOMPARE(s.Column(kSurfacePads), "No|Yes|No|Yes|Yes|Yes");
      QVERIFY(s.Notice().endsWith(": 1."));
      QVERIFY(!s.Editor());
    });
  }

  void PasteIsRefusedAsAWhole() {
    struct SCase {
      const char* why;
      int row, col;
      const char* text;
    };
    constexpr SCase kCases[] = {{"a choice that is not offered", 1, kName, "A\tSolder mask\nB\tAir\n"},
                                {"no length", 1, kGap, "0.5\n0.5\nwide\n"},
                                {"no check mark", 1, kSurfacePads, "Yes\n\nperhaps\n"},
                                {"in a row yet to be added", 4, kName, "A\tSolder mask\nB\tAir\n"},
                                {"more columns than there are", 1, kGap, "0.5\t0.5\n"}};
    OnTypes([&](CStage& s) {
      const auto state = [&s] { return s.Column(kName) + s.Column(kUsage) + s.Column(kSurfacePads) + s.Column(kGap); };
      const QString before = state();
      for (const SCase& one : kCases) {
        s.Go(one.row, one.col);
        s.Paste(one.text);
        QVERIFY2(state() == before && !s.dialog->IsModified(), one.why);
        QVERIFY2(s.Notice().startsWith("Nothing was"), one.why);
      }
    });
    const CStage empty(
        CLayerSpansPage::GetThisClass(), [](CPcbDesign&) {},
        [](CStage& s) {
          s.Paste("Through\tNo such layer\tNo such layer\n");
          QCOMPARE(s.grid->PresentRows(), 0);
          QVERIFY(s.Notice().startsWith("Nothing was"));
        });
  }

  void PasteOpensNoForms() {
    const auto fill = [](CPcbDesign& design) { design.AddTrackStyle("Signal", 250'000); };
    const CStage stage(CTrackStylesPage::GetThisClass(), fill, [](CStage& s) {
      const QString before = s.Column(1);
      s.Go(s.grid->PresentRows(), 1);
      s.Paste("First\nSecond\n");
      QCOMPARE(s.Column(1), before);
      QVERIFY2(s.Notice().startsWith("Nothing was pasted"), qPrintable(s.Notice()));
      s.Paste("First\n");  // adds none
      QVERIFY(s.Column(1) != before);
      QVERIFY(s.opened.empty());
    });
  }

  void FilterHidesRowsFromPasteAndFillAlone() {
    OnTypes([](CStage& s) {
      s.Go(1, kName);
      Key(Qt::Key_F, Qt::ControlModifier);
      Keys("DOCUM");
      QCOMPARE(s.Shown(kName), "Notes|Assembly");
      QCOMPARE(s.grid->PresentRows(), 4);
      Key(Qt::Key_Return);
      QCOMPARE(QApplication::focusWidget(), &s.Table());
      QCOMPARE(s.Table().model()->headerData(0, Qt::Vertical).toString(), "3");
      Key(Qt::Key_A, Qt::ControlModifier);
      Key(Qt::Key_Space);
      QCOMPARE(s.Column(kSurfacePads), "No|Yes|Yes|Yes");
      s.Go(1, kName);
      s.Paste("A\nB\nC\n");  // a third row would be one that the filter hides
      QVERIFY(s.Notice().startsWith("Nothing was pasted"));
      s.Paste("Words\nPlan\n");
      QCOMPARE(s.Column(kName), "Mask|Copper|Words|Plan");
      s.Go(1, kUsage);
      s.Enter("Solder");  // no longer matches, and stays for the time being
      QCOMPARE(s.Shown(kName), "Words|Plan");
      s.view->EditCell(2, kName);  // what a refused Apply wants: the filter gives way
      QCOMPARE(s.Shown(kName), "Mask|Copper|Words|Plan");
      QVERIFY(s.Editor());
      Key(Qt::Key_Escape);
      Key(Qt::Key_F, Qt::ControlModifier);
      Keys("plan");
      Key(Qt::Key_Escape);  // ends the filter, not the dialog
      QCOMPARE(s.Shown(kName), "Mask|Copper|Words|Plan");
      QVERIFY(s.dialog->IsOpen());
    });
  }

  void HeaderClickSortsTypesAndNeverLayers() {
    const auto click = [](CStage& s, int col) {
      QHeaderView* const header = s.Table().horizontalHeader();
      QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                        QPoint(header->sectionViewportPosition(col) + 30, header->height() / 2));
    };
    OnTypes([&](CStage& s) {
      const QHeaderView& header = *s.Table().horizontalHeader();
      s.Go(2, kName);
      QVERIFY(!header.isSortIndicatorShown());
      click(s, kName);
      QCOMPARE(s.Shown(kName), "Assembly|Copper|Mask|Notes");
      QVERIFY(header.isSortIndicatorShown());
      QCOMPARE(header.sortIndicatorSection(), int{kName});
      QCOMPARE(header.sortIndicatorOrder(), Qt::AscendingOrder);
      click(s, kName);
      QCOMPARE(s.Shown(kName), "Notes|Mask|Copper|Assembly");
      QCOMPARE(header.sortIndicatorOrder(), Qt::DescendingOrder);
      QCOMPARE(s.Text(s.grid->GetFocusCell().row, kName), "Copper");  // the cursor stays with its row
      QVERIFY(!s.dialog->IsModified());
    });
    OnLayers([&](CStage& s) {
      click(s, 1);
      QCOMPARE(s.Shown(1), "[All layers]|Top|Bottom|Glue|Text");
      QVERIFY(!s.Table().horizontalHeader()->isSortIndicatorShown());
    });
  }

  void SelectionAndCursorBelongToTheGrid() {
    OnTypes([](CStage& s) {
      s.Select(2, kName, 4, kUsage);
      QCOMPARE(s.grid->SelectedRows(), (std::vector<int>{2, 3, 4}));
      s.grid->ClearSelection();  // a command of the page selects others
      s.grid->SetRowSel(1);
      s.grid->SetRowSel(3);
      s.grid->SetFocusCell(3, kName);
      s.view->Refresh();
      QItemSelectionModel& selection = *s.Table().selectionModel();
      QVERIFY(selection.isRowSelected(0) && !selection.isRowSelected(1) && selection.isRowSelected(2));
      QCOMPARE(s.Table().currentIndex(), s.Table().model()->index(2, kName));
      QCOMPARE(s.grid->SelectedRows(), (std::vector<int>{1, 3}));
    });
  }

  void RowsThatMoveAndGoAreFollowed() {
    OnTypes([](CStage& s) {
      s.Go(3, kName);
      const QPersistentModelIndex notes = s.Table().currentIndex();
      const auto shownAsInGrid = [&s, &notes](const QString& why) {
        s.view->Refresh();
        QVERIFY2(s.Shown(kName) == s.Column(kName), qPrintable(why));
        QVERIFY2(!notes.isValid() || notes.data().toString() == "Notes", qPrintable(why));
      };
      s.grid->SwapRows(1, 4);
      shownAsInGrid("swapped");
      s.grid->Reorder({2, 3, 4, 1});
      shownAsInGrid("ordered anew");
      s.grid->SetRowHeight(1, 0);
      shownAsInGrid("first hidden");
      s.grid->SetRowHeight(1, 1);
      s.grid->SetRowHeight(4, 0);
      shownAsInGrid("one comes, another goes");
      s.grid->InsertRow(2);
      s.grid->InsertRow(2);
      shownAsInGrid("two inserted");
      s.grid->DeleteAllRows();
      shownAsInGrid("empty");
      QVERIFY(!notes.isValid());
      s.grid->InsertRow();
      shownAsInGrid("filled again");
    });
  }

  void ColumnsComeBackAsTheyWereLeft() {
    const auto layout = [](CStage& s) {
      const QHeaderView& header = *s.Table().horizontalHeader();
      QStringList columns;
      for (int place = 0; place < header.count(); ++place) {
        const int col = header.logicalIndex(place);
        columns.push_back(QString::number(col) + u':' + QString::number(header.sectionSize(col)));
      }
      return columns.join(u' ');
    };
    QString left, usual;
    OnTypes([&](CStage& s) {
      usual = layout(s);
      QHeaderView& header = *s.Table().horizontalHeader();
      header.moveSection(header.visualIndex(kUsage), 0);
      header.resizeSection(kName, 222);
      QMenu* const menu = s.HeaderMenu();
      QVERIFY(menu);
      QVERIFY(!menu->actions()[kUsed]->text().isEmpty());  // though its header is empty
      menu->actions()[kSurfacePads]->trigger();
      menu->close();
      QVERIFY(s.Table().isColumnHidden(kSurfacePads));
      left = layout(s);
      s.dialog->ActivePanel().SortByColumn(*s.grid, kName);  // rows that move leave the columns alone
      s.view->Refresh();
      Key(Qt::Key_F, Qt::ControlModifier);
      Keys("Mask");
      Key(Qt::Key_Escape);
      QCOMPARE(layout(s), left);
    });
    QVERIFY(left != usual);
    OnTypes([&](CStage& s) {
      QCOMPARE(layout(s), left);
      s.Go(1, kUsage);
      Key(Qt::Key_Right);
      QCOMPARE(s.Where(), "1,0");  // as the columns stand
      s.view->EditCell(1, kSurfacePads);
      QVERIFY(!s.Table().isColumnHidden(kSurfacePads));  // an error in it can be seen
      Key(Qt::Key_Escape);
      QMenu* const menu = s.HeaderMenu();
      QVERIFY(menu);
      menu->actions().back()->trigger();
      menu->close();
      QCOMPARE(layout(s), usual);
    });
  }

  void ADamagedLayoutIsTheUsualOne() {
    for (const char* kept : {"", "0:20", "rubbish", "0:20,0:20", "99999999999999999999:1",
                             "0:20-,1:20-,2:20-,3:20-,4:20-,5:20-,6:20-,7:20-,8:20-,9:20-,10:20-,11:20-,12:20-",
                             "0:0,1:20,2:20,3:20,4:20,5:20,6:20,7:20,8:20,9:20,10:20,11:20,12:20",
                             "13:20,1:20,2:20,3:20,4:20,5:20,6:20,7:20,8:20,9:20,10:20,11:20,12:20"}) {
      CAppRegistry("Settings\\LayerTypes").SetValue("View", kept);
      OnTypes([&](CStage& s) {
        for (int col = 0; col < s.grid->GetColumnCount(); ++col) {
          QVERIFY2(s.Table().horizontalHeader()->visualIndex(col) == col, kept);
          QVERIFY2(s.Table().columnWidth(col) == s.grid->Column(col).usualWidth, kept);
        }
      });
    }
  }

  void AProblemIsMarkedUntilTheCellIsEntered() {
    OnTypes([](CStage& s) {
      s.view->ShowProblem(3, kName, "<b> & Taken");
      const QPersistentModelIndex cell = s.Table().model()->index(2, kName);
      QTextDocument tip;
      tip.setHtml(cell.data(Qt::ToolTipRole).toString());
      QCOMPARE(tip.toPlainText(), "<b> & Taken");
      QCOMPARE(cell.data(Qt::AccessibleDescriptionRole).toString(), "<b> & Taken");
      QCOMPARE(s.Notice(), "<b> & Taken");
      s.grid->SwapRows(1, 3);
      s.view->Refresh();
      QCOMPARE(cell.row(), 0);
      QVERIFY(!cell.data(Qt::ToolTipRole).toString().isEmpty());
      s.Go(1, kName);
      s.Enter("Free");
      QVERIFY(cell.data(Qt::ToolTipRole).toString().isEmpty());
      QVERIFY(s.Notice().isEmpty());
    });
  }

  void WhatCannotBeEditedSaysSo() {
    OnLayers([](CStage& s) {
      const QAbstractItemModel& model = *s.Table().model();
      QVERIFY(!model.index(0, 1).data(Qt::AccessibleDescriptionRole).toString().isEmpty());  // built in
      QVERIFY(model.index(3, 1).data(Qt::AccessibleDescriptionRole).toString().isEmpty());
    });
  }
};

QTEST_MAIN(GridTest)
#include "grid_test.moc"
