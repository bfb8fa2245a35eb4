// Dialogs as a person meets them: windows that are opened by the program's own commands and worked with by keys.
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabBar>
#include <QTemporaryDir>

#include "commands/commands.h"
#include "exampledesigns.h"
#include "model/controls/formatedit.h"
#include "model/services/files.h"
#include "model/services/registry.h"
#include "model/services/report.h"
#include "person.h"
#include "storage/designfile.h"
#include "technology/layers/layertypespage.h"
#include "technology/sheet/sizesdialog.h"
#include "ui/qt/sheetview.h"
#include "ui/qt/stackview.h"
#include "ui/qt/text.h"
#include "ui/qt/theme.h"
#include "ui/qt/userinterface.h"

namespace {
/// A form with a field of every kind, and a preview that follows a length.
class CEveryField : public CDialog {
  TECHSHEET_CLASS(CEveryField, CDialog)
  explicit CEveryField(CDesign& design) : CDialog(Text::Defaults) {
    length.SetValue(&design, 1'000'000);
    choice.SetItems({{1, "One"}, {2, "Two"}});
    choice.SetValue(7, "Seven");
    for (CFormField* field : std::initializer_list<CFormField*>{&name, &length, &count, &flag, &choice, &colour})
      AddField(*field);
    name.SetChangeHandler([this] { length.SetLabel(name.GetText() == "Via" ? Text::Length : Text::Size); });
  }
  CPreview GetPreview() const override {
    SPadPreview pad{};
    length.GetValue(pad.width, nullptr);
    drawn = pad.width;
    return pad;
  }
  CEdit name{"Name", Text::Name};
  CFormatEdit length{"Length", Text::Size};
  CIntegerEdit count{"Count", Text::Usage, -5, 50};
  CCheckBox flag{"Flag", Text::Tented};
  CComboBox choice{"Choice", Text::Type, EEditor::Choice};
  CColourComboBox colour{"Colour", Text::Colour};
  mutable int drawn = 0;
};

/// Two lists, and a command that moves what is selected from one to the other.
class CTwoLists : public CDialog {
  TECHSHEET_CLASS(CTwoLists, CDialog)
  CTwoLists() : CDialog(Text::TechnologyManager) {
    file.selectionChanged = [this] { file.description = IntText(Selected()); };
    AddList(file);
    AddList(target);
    AddCommand("Copy", [this] { Copy(); }, [this] { return Selected() > 0; });
  }
  int Selected() const {
    return static_cast<int>(
        std::count_if(file.entries.begin(), file.entries.end(), [](auto& e) { return e.selected; }));
  }
  void Copy() {
    for (const SListBox::SEntry& entry : file.entries)
      if (entry.selected) target.entries.push_back({entry.text, nullptr, false});
  }
  SListBox file{"file", {{"A"}, {"B"}, {"C"}}, {}, {}};
  SListBox target{"target", {}, {}, {}};
};

std::unique_ptr<CPcbDesign> ExampleBoard() {
  for (const SExampleDesign& example : ExampleDesigns()) {
    std::unique_ptr<CTechnology> made = example.make();
    if (made->IsKindOf(CPcbDesign::GetThisClass()))
      return std::unique_ptr<CPcbDesign>(static_cast<CPcbDesign*>(made.release()));
  }
  return nullptr;
}

constexpr const char* kGround = "Ground";

/// The letters that Alt reaches in a window, each as often as it occurs.
QString LettersOf(QWidget& window) {
  QString letters;
  const auto note = [&](const QString& text) {
    const qsizetype at = text.indexOf(u'&');
    if (at >= 0 && at + 1 < text.size()) letters += text[at + 1].toLower();
  };
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
    if (button->isVisible()) note(button->text());
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->isVisible() && label->buddy()) note(label->text());
  std::sort(letters.begin(), letters.end());
  return letters;
}

class CDialogsTest : public QObject {
  Q_OBJECT

 private:
  /// Opens the technology dialog on the Layers page.
  bool WithLayers(const std::function<void(QDialog& window)>& script) {
    return Meet([this] { ChangeLayers(design.get()); }, script);
  }
  CQtUserInterface ui;
  CUserInterfaceScope installed{ui};
  std::unique_ptr<CPcbDesign> design;
  CString before;

 private slots:
  void init() {
    InstallSettingsStore(nullptr);
    design = ExampleBoard();
    design->ResetUndoLevels();
    before = DesignText(*design);
  }
  void cleanup() { QLocale::setDefault(QLocale::c()); }

  // ---- What closes and what writes

  void OkWritesAllPagesAsOneStepAndCloses() {
    QVERIFY(WithLayers([](QDialog& window) {
      Type(window, "Power", "Name", "Supply");
      Key(Qt::Key_PageDown, Qt::ControlModifier);
      Type(window, "Assembly", "Name", "Fitting");
      Click(window, "OK");
    }));
    QVERIFY(design->FindLayer("Supply") && design->FindLayerType("Fitting"));
    QVERIFY(design->Undo());
    QCOMPARE(DesignText(*design), before);
  }

  void WhatEndsADialogWithoutWriting() {
    for (const QString way : {"Cancel", "Escape", "the window's close"}) {
      QVERIFY(WithLayers([&](QDialog& window) {
        Type(window, "Power", "Name", "Supply");
        if (way == "Escape") {
          Key(Qt::Key_F2);
          Keys("open");
          Key(Qt::Key_Escape);  // the edit
          QCOMPARE(CellText(window, "Supply", "Name"), "Supply");
        }
        const auto leave = [&] {
          if (way == "Cancel") Click(window, way);
          if (way == "Escape") Key(Qt::Key_Escape);
          if (way == "the window's close") window.close();
        };
        QCOMPARE(MessageOf(leave), QtText(Text::CloseUnapplied));  // Escape is No
        QVERIFY(window.isVisible());
        QCOMPARE(MessageOf(leave, "Yes"), QtText(Text::CloseUnapplied));
      }));
      QCOMPARE(DesignText(*design), before);
      QVERIFY(!design->Undo());
    }
  }

  void ApplyIsGreyUntilSomethingChangedAndCancelReadsCloseAfterIt() {
    QVERIFY(WithLayers([&](QDialog& window) {
      QVERIFY(!Button(window, "Apply")->isEnabled());
      Go(window, "Power", "Name");
      for (const bool givesUp : {true, false}) {
        Key(Qt::Key_F2);
        QVERIFY(!Button(window, "Apply")->isEnabled());
        Keys("Supply");
        QVERIFY(Button(window, "Apply")->isEnabled());  // the edit is taken over before it is applied
        if (givesUp) Key(Qt::Key_Escape);
      }
      QVERIFY(Button(window, "Cancel") && !Button(window, "Close"));
      static_cast<CDialogView&>(window).Press("Apply");
      QVERIFY(design->FindLayer("Supply"));
      QVERIFY(!Button(window, "Apply")->isEnabled());
      Click(window, "Close");
    }));
    QVERIFY(design->FindLayer("Supply"));
  }

  void ClosingAfterApplyAsksAndNoIsTheDefault() {
    QVERIFY(WithLayers([&](QDialog& window) {
      Type(window, "Power", "Name", "Supply");
      Click(window, "Apply");
      Type(window, "Supply", "Name", "Later");
      QVERIFY(Meet([&] { window.close(); }, [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); }));
      QVERIFY(window.isVisible());
      MessageOf([&] { Click(window, "Close"); }, "Yes");
    }));
    QVERIFY(design->FindLayer("Supply") && !design->FindLayer("Later"));
  }

  // ---- What is refused

  void ARefusalBringsPageAndCellToTheFront() {
    for (const QString command : {"OK", "Apply"}) {
      const bool writesBefore = command == "Apply";
      QVERIFY(WithLayers([&](QDialog& window) {
        Type(window, kGround, "Name", "Top");
        Key(Qt::Key_PageUp, Qt::ControlModifier);  // to a page that is applied before
        if (writesBefore) Type(window, "Signal", "Name", "Signals");
        const QString message = MessageOf([&] { Click(window, command); }, "OK");
        QVERIFY(message.startsWith("Layers: ") && message.contains("\"Top\""));  // is not in front
        const QString reason = message.mid(8);
        QVERIFY(Button(window, writesBefore ? "Close" : "Cancel"));
        QVERIFY(window.isVisible());
        QCOMPARE(Named<QTabBar>(window, QtText(Text::Pages))->currentIndex(), 5);  // the Layers page again
        const QModelIndex cell = Table(window).currentIndex();
        QCOMPARE(cell.data().toString(), "Top");
        QVERIFY(Table(window).Delegate().Editor());  // ready to be corrected
        QCOMPARE(cell.data(Qt::ToolTipRole).toString().contains("Top"), true);
        QCOMPARE(cell.data(Qt::AccessibleDescriptionRole).toString().contains(reason), true);
        QVERIFY(Shown<QLabel>(window, [&](QLabel& label) { return label.text() == reason; }));
        Keys("Earth");
        Click(window, "OK");
      }));
      QVERIFY(design->FindLayer("Earth"));
      QVERIFY(design->Undo());
      QCOMPARE(DesignText(*design), before);
    }
  }

  void RowsWrittenAboveARefusedOneCannotBeCancelled() {
    QVERIFY(WithLayers([](QDialog& window) {
      Key(Qt::Key_PageDown, Qt::ControlModifier);
      QAbstractItemModel& types = *Table(window).model();
      const auto nameOf = [&](int row) { return types.index(row, 1).data().toString(); };
      Type(window, nameOf(0), "Name", "Fitting");
      Type(window, nameOf(types.rowCount() - 1), "Name", "\"");
      MessageOf([&] { Click(window, "Apply"); }, "OK");
      MessageOf([&] { Click(window, "Close"); }, "Yes");
    }));
    QVERIFY(design->FindLayerType("Fitting"));
  }

  void DestructiveQuestionsNameTheItemAndMeanNo() {
    QVERIFY(WithLayers([&](QDialog& window) {
      const int rows = Table(window).model()->rowCount();
      Go(window, "Top silkscreen", "Name");
      QVERIFY(MessageOf([] { Key(Qt::Key_Delete); }).contains("\"Top silkscreen\""));
      QCOMPARE(Table(window).model()->rowCount(), rows);
      MessageOf([] { Key(Qt::Key_Delete); }, "Yes");
      QCOMPARE(Table(window).model()->rowCount(), rows - 1);
      MessageOf([&] { Click(window, "Cancel"); }, "Yes");
    }));
    QCOMPARE(DesignText(*design), before);
  }

  // ---- Pages

  void ThePictureGivesWayToTheColumns() {
    QVERIFY(WithLayers([](QDialog& window) {
      for (const int width : {1200, 1600}) {
        window.resize(width, 450);
        QCOMPARE(Table(window).horizontalScrollBar()->maximum(), 0);
        QVERIFY(Named<CStackView>(window, QtText(Text::StackCrossSection))->width() < 520);
      }
      Click(window, "Cancel");
    }));
  }

  void KeysChangePages() {
    QVERIFY(WithLayers([](QDialog& window) {
      auto& tabs = *Named<QTabBar>(window, QtText(Text::Pages));
      const int layers = tabs.currentIndex();
      const int last = tabs.count() - 1;
      struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int page;
      } const kSteps[] = {{Qt::Key_PageDown, Qt::ControlModifier, layers + 1},
                          {Qt::Key_Tab, Qt::ControlModifier, layers + 2},
                          {Qt::Key_PageUp, Qt::ControlModifier, layers + 1},
                          {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, layers}};
      for (const auto& step : kSteps) {
        Key(step.key, step.modifiers);
        QCOMPARE(tabs.currentIndex(), step.page);
        QVERIFY(Table(window).hasFocus());
      }
      Key(Qt::Key_Backtab, Qt::ShiftModifier);
      QVERIFY(tabs.hasFocus());
      Key(Qt::Key_Tab);
      QVERIFY(Table(window).hasFocus());
      QStringList behind;  // the buttons of the page, the stack, and those of the dialog
      for (Key(Qt::Key_Tab); !tabs.hasFocus() && behind.size() < 20; Key(Qt::Key_Tab))
        behind << QApplication::focusWidget()->accessibleName();
      QCOMPARE(behind.first(), "Add");
      QCOMPARE(behind.mid(behind.size() - 3), (QStringList{QtText(Text::StackCrossSection), "OK", "Cancel"}));
      for (int page = layers; page <= last; ++page) Key(Qt::Key_Tab, Qt::ControlModifier);
      QCOMPARE(tabs.currentIndex(), 0);
      Click(window, "Cancel");
    }));
  }

  void AddOpensTheNameOfTheNewRow() {
    QVERIFY(WithLayers([&](QDialog& window) {
      Key(Qt::Key_Insert);
      Keys("Glue");
      Click(window, "Add");
      Keys("Paste");
      Click(window, "OK");
    }));
    QVERIFY(design->FindLayer("Glue") && design->FindLayer("Paste"));
  }

  void PageSizeAndPositionComeBack() {
    QRect place;
    QVERIFY(Meet([this] { ChangeSizes(design.get()); },
                 [&](QDialog& window) {
                   auto& tabs = *Named<QTabBar>(window, QtText(Text::Pages));
                   tabs.setCurrentIndex(6);
                   window.setGeometry(40, 60, 640, 420);
                   place = window.geometry();
                   Click(window, "Cancel");
                 }));
    QVERIFY(Meet([this] { ChangeSizes(design.get()); },
                 [&](QDialog& window) {
                   QCOMPARE(Named<QTabBar>(window, QtText(Text::Pages))->currentIndex(), 6);
                   QCOMPARE(window.geometry(), place);
                   Click(window, "Cancel");
                 }));
  }

  void ADamagedPlaceFallsBackAndTheSheetFitsASmallScreen() {
    const std::pair<const char*, const char*> kPlaces[] = {{"wide", "left"},
                                                           {"2000000000,2000000000", "10,10"},
                                                           {"0,-5", "10,10"},
                                                           {"600,400", "90000,-90000"}};  // on a screen gone by now
    for (const auto& [size, position] : kPlaces) {
      CAppRegistry("Settings\\Styles").SetValue("Size", size);
      CAppRegistry("Settings\\Styles").SetValue("Position", position);
      QVERIFY(WithLayers([&](QDialog& window) {
        QVERIFY2(window.screen()->availableGeometry().contains(window.geometry()), size);
        QVERIFY2(window.width() >= 300 && window.height() >= 200, size);
        const QSize least = window.minimumSizeHint();
        QVERIFY2(least.width() <= 1024 && least.height() <= 600 - 40, qPrintable(QString::number(least.height())));
        Click(window, "Cancel");
      }));
    }
  }

  // ---- Forms, lists, reports, files

  void FormsTakeWhatAPersonTypes() {
    CEveryField form(*design);
    QVERIFY(Meet([&] { form.DoModal(); },
                 [&](QDialog& window) {
                   Keys("Via");
                   Key(Qt::Key_Tab);
                   Keys("2.5");
                   QTRY_COMPARE(form.drawn, 2'500'000);  // before the field is left
                   Key(Qt::Key_Tab);
                   QCOMPARE(Named<QLineEdit>(window, "Length")->text(), "2.5");  // what it is called follows the name
                   QVERIFY(Shown<QLabel>(window, [](QLabel& one) { return PlainText(one.text()) == "Length"; }));
                   Keys("99");  // no more than 50 fits
                   Key(Qt::Key_Tab);
                   Key(Qt::Key_Space);
                   auto& combo = *Named<QComboBox>(window, "Type");
                   QCOMPARE(combo.currentIndex(), -1);  // "Seven" is shown and kept
                   QCOMPARE(combo.placeholderText(), "Seven");
                   Key(Qt::Key_Tab);
                   Keys("Tw");
                   Key(Qt::Key_Tab);
                   Keys("#12ab34");
                   Key(Qt::Key_Return);
                 }));
    QCOMPARE(form.name.GetText(), CString("Via"));
    QCOMPARE(form.flag.IsChecked(), true);
    QCOMPARE(form.choice.GetValue(), 2);
    QCOMPARE(form.colour.GetText(), CString("#12AB34"));
    QVERIFY(form.count.GetValue() <= 50);
  }

  void FormsTakeAnyUnitAndADecimalComma() {
    const QLocale german(QLocale::German, QLocale::Germany), c = QLocale::c();
    struct SCase {
      QLocale locale;
      const char* typed;
      int dsu;  // -1: refused
    };
    for (const SCase& one : {SCase{c, "0.3", 300'000}, SCase{c, "10 mil", 254'000}, SCase{german, "0,3", 300'000},
                             SCase{german, "2,5 mil", 63'500}, SCase{german, "0.3", 300'000}, SCase{c, "0,3", -1},
                             SCase{german, "1.000,5", -1}}) {
      QLocale::setDefault(one.locale);
      CEveryField form(*design);
      QVERIFY(Meet([&] { form.DoModal(); },
                   [&](QDialog& window) {
                     auto& edit = *Named<QLineEdit>(window, "Size");
                     edit.setFocus();
                     edit.selectAll();
                     Keys(one.typed);
                     Key(Qt::Key_Tab);
                     QVERIFY2(edit.accessibleDescription().isEmpty() == (one.dsu >= 0),
                              one.typed);  // says what is wrong
                     Click(window, "OK");
                   }));
      int value = -1;
      form.length.GetValue(value, nullptr);
      QCOMPARE(value, one.dsu);
    }
  }

  void AFormRefusesOnTheFieldAtFault() {
    QVERIFY(WithLayers([&](QDialog& sheet) {
      Go(sheet, kGround, "Name");
      QVERIFY(Meet([&] { Click(sheet, "Edit"); },
                   [&](QDialog& window) {
                     window.resize(window.minimumSizeHint());
                     auto& name = *Named<QLineEdit>(window, "Name");
                     name.setFocus();
                     name.selectAll();
                     Keys("Top");
                     Named<QComboBox>(window, "Side")->setFocus();
                     const QString reason = MessageOf([&] { Click(window, "OK"); }, "OK");
                     QVERIFY(window.isVisible() && name.hasFocus());
                     QCOMPARE(name.accessibleDescription(), reason);
                     const auto says = [&](QLabel& label) { return label.text() == reason; };
                     const auto* const line = Shown<QLabel>(window, says);
                     QVERIFY(line && line->height() >= line->heightForWidth(line->width()));
                     Keys("Earth");
                     QVERIFY(name.accessibleDescription().isEmpty() && !Shown<QLabel>(window, says));
                     Key(Qt::Key_Return);
                   }));
      QVERIFY(Cell(sheet, "Earth", "Name").isValid());
      MessageOf([&] { Click(sheet, "Cancel"); }, "Yes");
    }));
  }

  void TheCalculatorFillsALength() {
    CEveryField form(*design);
    QVERIFY(Meet([&] { form.DoModal(); },
                 [&](QDialog& window) {
                   Named<QLineEdit>(window, "Size")->setFocus();
                   QVERIFY(Meet([] { Key(Qt::Key_F4); },
                                [&](QDialog& calculator) {
                                  const QString title = calculator.windowTitle() + qApp->applicationDisplayName();
                                  QVERIFY2(calculator.width() > calculator.fontMetrics().horizontalAdvance(title) + 100,
                                           "room for the title and the buttons beside it");
                                  qobject_cast<QLineEdit*>(QApplication::focusWidget())->selectAll();
                                  Keys("1/0");
                                  QVERIFY(MessageOf([&] { Click(calculator, "OK"); }, "OK").contains("1/0"));
                                  Keys("(1+2)/8");
                                  Key(Qt::Key_Return);
                                }));
                   Click(window, "OK");
                 }));
    int value = 0;
    form.length.GetValue(value, nullptr);
    QCOMPARE(value, 375'000);
  }

  void TwoListsMoveWhatIsSelected() {
    CTwoLists lists;
    QVERIFY(Meet([&] { lists.DoModal(); },
                 [&](QDialog& window) {
                   QVERIFY(!Button(window, "Copy")->isEnabled());
                   auto& file = *Named<QListWidget>(window, QtText(Text::TechnologyFile));
                   file.setFocus();
                   Key(Qt::Key_Home);
                   Key(Qt::Key_Down, Qt::ShiftModifier);
                   QTRY_VERIFY(Button(window, "Copy")->isEnabled());
                   QCOMPARE(file.accessibleDescription(), "2");
                   Click(window, "Copy");
                   QCOMPARE(Named<QListWidget>(window, QtText(Text::Design))->count(), 2);
                   Click(window, "OK");
                 }));
    QCOMPARE(lists.target.entries.back().text, CString("B"));
  }

  void ReportsAreReadCopiedAndSaved() {
    QTemporaryDir folder;
    CString saved;
    InstallFiles({{}, [&](const CString& path, std::string_view text) -> CResult<void> {
                    saved = path + ": " + CString(text);
                    return {};
                  }});
    CReportFile report(nullptr, Text::ImportProblems);
    report.WriteLine("first");
    report.WriteLine("second <b>");
    QVERIFY(Meet([&] { report.View(); },
                 [&](QDialog& window) {
                   auto& text = *Named<QPlainTextEdit>(window, QtText(Text::ImportProblems));
                   QCOMPARE(text.toPlainText(), "first\nsecond <b>");
                   QVERIFY(text.isReadOnly());
                   VerifyNames(window, 4);
                   Click(window, "Copy");
                   QVERIFY(Meet([&] { Click(window, "Save"); },
                                [&](QDialog& chooser) {
                                  chooser.findChild<QLineEdit*>()->selectAll();
                                  Keys(folder.filePath("mine"));
                                  Key(Qt::Key_Return);
                                }));
                   QTest::keyClick(&window, Qt::Key_Escape);
                 }));
    InstallFiles({});
    QCOMPARE(QGuiApplication::clipboard()->text(), "first\nsecond <b>");
    QCOMPARE(saved, FromQt(folder.filePath("mine.txt")) + ": first\nsecond <b>\n");
  }

  void LongQuestionsKeepTheirEnds() {
    CString text = "Delete?\r\n";
    for (int line = 1; line <= 300; ++line) text += "  use " + IntText(line) + "\r\n";
    EAnswer answer = EAnswer::Yes;
    QVERIFY(Meet([&] { answer = ui.ShowMessage({0, {}, text + "Really?", EButtons::YesNo}); },
                 [](QDialog& window) {
                   auto& box = static_cast<QMessageBox&>(window);
                   QVERIFY(box.text().startsWith("Delete?") && box.text().endsWith("Really?"));
                   QVERIFY(box.text().count(u'\n') < 20);
                   QVERIFY(box.detailedText().contains("use 150\n"));
                   QVERIFY(window.height() < 560);
                   window.close();
                 }));
    QCOMPARE(answer, EAnswer::No);
  }

  void FilesAndMenusAreChosen() {
    QTemporaryDir folder;
    std::optional<CString> path;
    QVERIFY(
        Meet([&] { path = ui.ChooseFile({SFileChooser::EKind::Save, FromQt(folder.filePath("layers")), "csv", ""}); },
             [](QDialog& window) { QMetaObject::invokeMethod(&window, "accept"); }));
    QCOMPARE(path, FromQt(folder.filePath("layers.csv")));
    QVERIFY(Meet([&] { path = ui.ChooseFile({}); }, [](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); }));
    QVERIFY(!path);

    for (const bool chooses : {true, false}) {
      QTimer::singleShot(0, [&] {
        QWidget* const menu = QApplication::activePopupWidget();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, chooses ? Qt::Key_Return : Qt::Key_Escape);
      });
      QCOMPARE(ui.ShowMenu({"First", "Second", "Third"}), chooses ? 1 : -1);
    }
  }

  // ---- For everybody

  void LettersAreUniqueOnEachPage() {
    const auto check = [](QDialog& window) {
      const QString letters = LettersOf(window);
      QVERIFY(letters.size() > 1);
      QVERIFY2(std::adjacent_find(letters.begin(), letters.end()) == letters.end(), qPrintable(letters));
    };
    QVERIFY(WithLayers([&](QDialog& sheet) {
      for (int page = 0; page < 17; ++page, Key(Qt::Key_PageDown, Qt::ControlModifier)) {
        if (Table(sheet).model()->rowCount() == 0) continue;
        check(sheet);
      }
      QVERIFY(Meet([&] { Click(sheet, "Edit"); },
                   [&](QDialog& form) {
                     check(form);
                     Click(form, "Cancel");
                   }));
      Click(sheet, "Cancel");
    }));
  }

  void EverythingWithTheKeyboardHasAName() {
    const auto walk = [](QDialog& window, int least) {
      VerifyNames(window, least);
      window.reject();
    };
    QVERIFY(WithLayers([&](QDialog& sheet) {
      Go(sheet, kGround, "Name");
      QVERIFY(Meet([&] { Click(sheet, "Edit"); }, [&](QDialog& form) { walk(form, 20); }));
      walk(sheet, 100);  // its cells are there too
    }));
    CEveryField form(*design);
    QVERIFY(Meet([&] { form.DoModal(); }, [&](QDialog& window) { walk(window, 20); }));
    CTwoLists lists;
    QVERIFY(Meet([&] { lists.DoModal(); }, [&](QDialog& window) { walk(window, 10); }));
  }

  void ThemesCanBeRead() {
    QCOMPARE(qRound(Contrast(Qt::black, Qt::white)), 21);
    QVERIFY(qAbs(Contrast(QColor(0x767676), Qt::white) - 4.54) < 0.01);  // the well-known grey that just passes
    using P = QPalette;
    const std::pair<P::ColorRole, P::ColorRole> kPairs[] = {{P::WindowText, P::Window},
                                                            {P::Text, P::Base},
                                                            {P::Text, P::AlternateBase},
                                                            {P::ButtonText, P::Button},
                                                            {P::Highlight, P::HighlightedText},
                                                            {P::ToolTipText, P::ToolTipBase},
                                                            {P::PlaceholderText, P::Base},
                                                            {P::Link, P::Base},
                                                            {P::Link, P::Window},
                                                            {P::BrightText, P::Window}};
    for (const ETheme theme : {ETheme::Light, ETheme::Dark, ETheme::HighContrast}) {
      const QPalette colours = ThemePalette(theme);
      for (const P::ColorGroup group : {P::Active, P::Inactive})
        for (const auto& [front, back] : kPairs) {
          const double contrast = Contrast(colours.color(group, front), colours.color(group, back));
          QVERIFY2(contrast >= kReadable,
                   qPrintable(QStringLiteral("%1 on %2: %3").arg(front).arg(back).arg(contrast)));
        }
      QVERIFY(Contrast(colours.color(P::Mid), colours.color(P::Window)) >= 3);  // the edges of what can be worked with
      QVERIFY(Contrast(ProblemText(colours.color(P::Window)), colours.color(P::Window)) >= kReadable);
      QVERIFY(Contrast(colours.color(P::Text), ProblemGround(colours)) >= kReadable);
      QVERIFY(ProblemGround(colours) != colours.color(P::Base));
    }
  }
};
}  // namespace

QTEST_MAIN(CDialogsTest)
#include "dialogs_test.moc"
