// The main window as a person uses it: designs are opened, changed, saved and closed.
#include "ui/qt/mainwindow.h"

#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QTemporaryDir>
#include <deque>

#include "commands/commands.h"
#include "desktop/files.h"
#include "model/controls/dialog.h"
#include "model/services/registry.h"
#include "model/services/report.h"
#include "person.h"
#include "shared/adapters.h"
#include "storage/designfile.h"
#include "ui/qt/manualview.h"
#include "ui/qt/recentfiles.h"
#include "ui/qt/technologyview.h"
#include "ui/qt/text.h"

namespace {
/// Chooses the files and answers the dialogs that a test wrote down, and notes what was shown.
class CScripted final : public CNoUserInterface {
 public:
  int DoModal(CDialog& dialog) override {
    if (onDialog) onDialog(dialog);
    return CDialog::kOk;
  }
  EAnswer ShowMessage(const SMessage& message) override {
    shown.push_back(message.text);
    return message.Default();
  }
  void ViewReport(const CReportFile& report) override {
    for (const SReportLine& line : report.Lines()) shown.push_back(line.text);
  }
  std::optional<CString> ChooseFile(const SFileChooser& chooser) override {
    proposed = chooser.proposed;
    if (choices.empty()) return {};
    const CString choice = choices.front();
    choices.pop_front();
    return choice;
  }

  std::function<void(CDialog&)> onDialog;
  std::deque<CString> choices;
  CStringArray shown;
  CString proposed;
};

/// Answers questions in turn with the buttons of those texts, by Escape where there is no such button, and notes what
/// was asked and what Return would have done.
class CAnswers {
 public:
  explicit CAnswers(QStringList buttons) : m_buttons(std::move(buttons)) {
    QObject::connect(&m_timer, &QTimer::timeout, [this] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      const QString answer = m_buttons.value(questions.size());
      questions << box->text();
      byDefault = PlainText(box->defaultButton() ? box->defaultButton()->text() : QString());
      for (QAbstractButton* const button : box->buttons())
        if (PlainText(button->text()) == answer) return button->click();
      QTest::keyClick(box, Qt::Key_Escape);
    });
    m_timer.start(1);
  }
  QStringList questions;
  QString byDefault;

 private:
  QStringList m_buttons;
  QTimer m_timer;
};

QByteArray ContentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
void SetContent(const QString& path, const QByteArray& content) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(content);
}

constexpr char kBoard[] =
    "(kicad_pcb (version 20241229) (layers (0 \"F.Cu\" signal) (2 \"B.Cu\" signal))\n"
    "(net 0 \"\") (net 1 \" GND\"))";
}  // namespace

class CMainWindowTest : public QObject {
  Q_OBJECT

 private:
  QString Copy(const char* example, const char* name) {
    const QString path = m_folder->filePath(name);
    QFile::copy(QString(TECHSHEET_SOURCE_DIR "/examples/") + example, path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return path;
  }
  QAction* Action(const char* name) const { return m_window->findChild<QAction*>(name); }
  CDocument& Current() const { return m_window->Documents().Current()->Document(); }
  /// Renames the first layer that can be by way of the Layers page.
  void RenameLayer(const CString& name) {
    m_person->onDialog = [&](CDialog& dialog) {
      CPanel& page = dialog.ActivePanel();
      CEditGrid& grid = *page.Grids().front().grid;
      CString why;
      int row = 1, column = 0;
      while (column < grid.GetColumnCount() && grid.Column(column).title != "Name") ++column;
      while (row < grid.GetRowCount() && grid.GetItemText(row, column) != "Top") ++row;
      QVERIFY2(grid.Enter(row, column, SInput::Text(name), why), why.c_str());
      QVERIFY2(dialog.Press("OK", why), why.c_str());
    };
    Action("ChangeLayers")->trigger();
    m_person->onDialog = nullptr;
  }
  QString Tabs() const {
    QStringList tabs;
    for (int i = 0; i < m_window->Documents().count(); ++i) tabs << m_window->Documents().tabText(i);
    return tabs.join(' ');
  }

  std::unique_ptr<QTemporaryDir> m_folder;
  std::unique_ptr<CMainWindow> m_window;
  std::unique_ptr<CScripted> m_person;
  std::unique_ptr<CUserInterfaceScope> m_scope;

 private slots:
  void initTestCase() { Set_RegisterIgnoreDesignChange(); }
  void init() {
    m_folder = std::make_unique<QTemporaryDir>();
    InstallAdapters(FromQt(m_folder->filePath("settings")), [](const CString& trouble) { QFAIL(trouble.c_str()); });
    SDesktopFiles files = DesktopFiles({});
    files.manual = TECHSHEET_SOURCE_DIR "/docs/manual.md";
    m_window = std::make_unique<CMainWindow>(files);
    m_person = std::make_unique<CScripted>();
    m_scope = std::make_unique<CUserInterfaceScope>(*m_person);
    m_window->show();
  }
  void cleanup() {
    m_scope.reset();
    m_window.reset();
    InstallSettingsStore(nullptr);
  }

  void OpensFilesOnceEachInATab() {
    const QString board = Copy("four-layer.tspcb", "board.tspcb");
    const QString link = m_folder->filePath("link.tspcb");
    QFile::link(board, link);
    m_window->Open({FromQt(board), FromQt(Copy("amplifier.tsprj", "a.tsprj")), FromQt(link)});
    QCOMPARE(Tabs(), "board.tspcb a.tsprj");
    QCOMPARE(ToQt(Current().Path()), board);
    QCOMPARE(m_window->windowTitle(), "board.tspcb[*] - Techsheet");
  }

  void WhatCannotBeOpenedIsToldAndTheRestOpens() {
    const QString cut = Copy("four-layer.tspcb", "cut.tspcb");
    SetContent(cut, ContentOf(cut).left(500));
    m_window->Open({FromQt(cut), "/nowhere/at/all.tspcb", FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    QCOMPARE(Tabs(), "board.tspcb");
    QCOMPARE(m_person->shown.size(), 2u);
    QVERIFY(ToQt(m_person->shown[0]).contains("cut.tspcb"));
    QVERIFY(ToQt(m_person->shown[1]).contains("/nowhere/at/all.tspcb"));
  }

  void DroppedFilesOpen() {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(Copy("four-layer.tspcb", "a.tspcb")),
                   QUrl::fromLocalFile(Copy("connectors.tspcblib", "b.tspcblib"))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &drop);
    QTRY_COMPARE(Tabs(), "a.tspcb b.tspcblib");

    QMimeData text;
    text.setText("no file");
    QDragEnterEvent other(QPoint(50, 50), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    other.ignore();
    QApplication::sendEvent(m_window.get(), &other);
    QVERIFY(!other.isAccepted());
  }

  void StepsAreNamedUndoneAndJumpedTo() {
    m_window->Open({FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    const auto hasLayer = [this](const char* name) { return Current().Technology().FindLayer(name) != nullptr; };
    QVERIFY(!Action("Undo")->isEnabled());
    RenameLayer("Component side");
    QCOMPARE(Action("Undo")->text(), "&Undo Technology");
    QCOMPARE(Tabs(), "board.tspcb*");
    QVERIFY(m_window->isWindowModified());
    QMenu* const grids = Action("ChooseGrid")->menu();
    emit grids->aboutToShow();
    const QList<QAction*> choices = grids->actions();
    const auto other = std::ranges::find_if(choices, [](QAction* grid) { return !grid->isChecked(); });
    QVERIFY(other != choices.end());
    (*other)->trigger();
    QCOMPARE(Action("Undo")->text(), "&Undo Working grid");

    auto* const history = m_window->findChild<QListWidget*>();
    QCOMPARE(history->count(), 3);
    QCOMPARE(history->currentRow(), 2);
    emit history->itemActivated((history->setCurrentRow(0), history->currentItem()));
    QVERIFY(hasLayer("Top"));
    QCOMPARE(Tabs(), "board.tspcb");
    QVERIFY(!Action("Undo")->isEnabled());
    QCOMPARE(Action("Redo")->text(), "&Redo Technology");
    Action("Redo")->trigger();
    QVERIFY(hasLayer("Component side"));
    QCOMPARE(history->currentRow(), 1);
    QVERIFY(history->item(2)->text().contains("undone"));
  }

  void ClosingAsks() {
    struct SCase {
      const char* answer;
      bool isClosed, isSaved;
    };
    int open = 0;
    for (const SCase& one : {SCase{"Save", true, true}, SCase{"Discard", true, false}, SCase{"Cancel", false, false},
                             SCase{"(Escape)", false, false}}) {
      const QString name = QString(one.answer) + ".tspcb", path = Copy("four-layer.tspcb", qPrintable(name));
      m_window->Open({FromQt(path)});
      RenameLayer("Renamed");
      const QByteArray before = ContentOf(path);
      const CAnswers asked({one.answer});
      Action("Close")->trigger();
      QCOMPARE(asked.questions.size(), 1);
      QVERIFY(asked.questions.front().contains(name));
      QCOMPARE(m_window->Documents().count(), one.isClosed ? open : ++open);
      QCOMPARE(ContentOf(path) != before, one.isSaved);
    }
  }

  void QuitClosesNothingWhenOneDesignIsToStay() {
    for (const char* const name : {"a.tspcb", "b.tspcb"}) {
      m_window->Open({FromQt(Copy("four-layer.tspcb", name))});
      RenameLayer("Renamed");
    }
    const CAnswers asked({"Discard", "Cancel"});
    QVERIFY(!m_window->close());
    QCOMPARE(asked.questions.size(), 2);
    QCOMPARE(Tabs(), "a.tspcb* b.tspcb*");
  }

  void ChangesOfOthersAreNotOverwrittenUnasked_data() {
    QTest::addColumn<QByteArray>("appended");
    QTest::addColumn<bool>("isRemoved");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("isAsked");
    QTest::addColumn<bool>("isOurs");
    QTest::newRow("nobody") << QByteArray() << false << "" << false << true;
    QTest::newRow("changed, cancel") << QByteArray("\n") << false << "Cancel" << true << false;
    QTest::newRow("changed, escape") << QByteArray("\n") << false << "(Escape)" << true << false;
    QTest::newRow("changed, overwrite") << QByteArray("\n") << false << "Overwrite" << true << true;
    QTest::newRow("changed, other name") << QByteArray("\n") << false << "Save as" << true << false;
    QTest::newRow("changed, reload") << QByteArray("\n") << false << "Reload" << true << false;
    QTest::newRow("gone") << QByteArray() << true << "" << false << true;
  }

  void ChangesOfOthersAreNotOverwrittenUnasked() {
    QFETCH(const QByteArray, appended);
    QFETCH(const bool, isRemoved);
    QFETCH(const QString, answer);
    const QString path = Copy("four-layer.tspcb", "board.tspcb"), elsewhere = m_folder->filePath("other.tspcb");
    m_window->Open({FromQt(path)});
    RenameLayer("Ours");
    QByteArray theirs = ContentOf(path) + appended;
    SetContent(path, theirs);  // the time of the last change alone is no reason to ask
    if (isRemoved) QFile::remove(path);
    m_person->choices = {FromQt(elsewhere)};
    {
      const CAnswers asked({answer});
      Action("Save")->trigger();
      QTEST(!asked.questions.empty(), "isAsked");
      if (!asked.questions.empty()) QCOMPARE(asked.byDefault, "Cancel");
    }
    QTEST(ContentOf(path).contains("\"Ours\""), "isOurs");
    if (!ContentOf(path).contains("\"Ours\"")) QCOMPARE(ContentOf(path), theirs);
    QCOMPARE(QFile::exists(elsewhere), answer == "Save as");
    QCOMPARE(Current().Technology().FindLayer("Ours") == nullptr, answer == "Reload");
    if (Current().IsModified()) return;
    const CAnswers again({"Cancel"});
    Action("Save")->trigger();  // what was written is known from then on
    QCOMPARE(again.questions, QStringList());
  }

  void AFileThatCannotBeWrittenKeepsTheDesignModified() {
    m_window->Open({FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    RenameLayer("Renamed");
    m_person->choices = {FromQt(m_folder->filePath("no/such/folder.tspcb"))};
    {
      const CAnswers asked({"Cancel"});
      Action("SaveAs")->trigger();
      QVERIFY(asked.questions.size() == 1 && asked.questions[0].contains("folder.tspcb"));
    }
    QFile::remove(ToQt(Current().Path()));
    QDir().mkdir(ToQt(Current().Path()));  // a folder where the file should be
    for (const char* const answer : {"Cancel", "Save as"}) {
      QCOMPARE(Tabs(), "board.tspcb*");
      m_person->choices = {FromQt(m_folder->filePath("elsewhere.tspcb"))};
      const CAnswers asked({"Save", answer});
      m_window->Documents().Close(*m_window->Documents().Current());
    }
    QCOMPARE(Tabs(), "");
    QVERIFY(ContentOf(m_folder->filePath("elsewhere.tspcb")).contains("\"Renamed\""));
  }

  void WhatIsNoChangeOfADesignIsAskedAboutToo() {
    const QString path = Copy("four-layer.tspcb", "board.tspcb");
    m_window->Open({FromQt(path)});
    CDesign& design = *Current().Design();
    design.StartNestedUndoLevel(Text::Units);
    design.GetUnits()->SetType(EUnitType::Inch);
    design.EndNestedUndoLevel(Text::Units);
    QVERIFY(!design.GetChanged());
    const CAnswers asked({"Cancel"});
    Action("Close")->trigger();
    QCOMPARE(asked.questions, QStringList{QtText(Text::SaveViewBeforeClose, {"board.tspcb"})});
    QVERIFY(design.Undo());
    Action("Close")->trigger();
    QCOMPARE(Tabs(), "");
    QCOMPARE(asked.questions.size(), 1);
  }

  void TheStatusBarSaysWhatIsSelected() {
    m_window->Open({FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    CDesign& design = *Current().Design();
    const auto says = [&](const QString& text) {
      emit m_window->Documents().Current()->SelectionChanged();
      return Shown<QLabel>(*m_window, [&](QLabel& label) { return label.text() == text; }) != nullptr;
    };
    CTrackSegment* segment = nullptr;
    const CTrackStyle* style = nullptr;
    for (CNet& net : design.nets)
      for (CTrack& track : net.Tracks()) segment = track.Segments().First(), style = track.Values().defaultStyle.Get();
    segment->Set(&STrackSegmentFields::style, nullptr);  // that of its track counts
    design.Selection().Add(*segment);
    QVERIFY(says(ToQt("Track segment, Net: " + segment->Owner()->Owner()->RecordName() +
                      ", Layer: " + segment->Values().layer.Get()->GetName() + ", Style: " + style->GetName())));
    design.Selection().Add(*design.freePads.First());
    QVERIFY(says("2 items are selected."));
    const CAnswers answers({"Discard"});
    Action("Close")->trigger();
    QVERIFY(!Shown<QLabel>(*m_window, [](QLabel& label) { return label.text() == "2 items are selected."; }));
  }

  void SavingOverAnotherTabsFileIsRefused() {
    const QString a = Copy("four-layer.tspcb", "a.tspcb"), b = Copy("four-layer.tspcb", "b.tspcb");
    m_window->Open({FromQt(a), FromQt(b)});
    RenameLayer("Renamed");
    const QByteArray before = ContentOf(a);
    m_person->choices = {FromQt(a), FromQt(m_folder->filePath("c.tspcb"))};
    Action("SaveAs")->trigger();
    QCOMPARE(m_person->shown.size(), 1u);
    QVERIFY(ToQt(m_person->shown[0]).contains("a.tspcb"));
    QCOMPARE(ContentOf(a), before);
    QCOMPARE(Tabs(), "a.tspcb c.tspcb");
  }

  void CommandsAreEnabledAsTheKindAllows() {
    struct SCase {
      const char* kind;
      const char* enabled;
    };
    constexpr SCase kCases[] = {
        {"CPcbDesign",
         "Technology Layers Layer types Layer spans Pad styles Track styles Text styles Units Show all layers"},
        {"CScmDesign", "Technology Pad styles Wire styles Text styles Units Show all layers"},
        {"CScmSymDesign", "Technology Pad styles Text styles Units Show all layers"},
        {"CProject", "Technology Units"},
        {"CPcbSymbolLibrary", ""},
        {"CScmSymbolLibrary", ""}};
    for (const SCase& one : kCases) {
      Action((CString("New") + one.kind).c_str())->trigger();
      QStringList enabled;
      for (const char* const name :
           {"ChangeSizes", "ChangeLayers", "ChangeLayerTypes", "ChangeLayerSpans", "ChangePadStyles",
            "ChangeTrackStyles", "ChangeTextStyles", "ChangeWireLinkLengths", "ChangeUnits", "SetAllDisplayed"}) {
        if (Action(name)->isEnabled()) enabled << PlainText(Action(name)->text());
        QVERIFY(Action(name)->isVisible() == Action(name)->isEnabled() || !Current().Drawing());
      }
      QCOMPARE(enabled.join(' '), one.enabled);
      Action("Close")->trigger();  // has nothing to lose yet, and goes without a question
      QCOMPARE(m_window->Documents().count(), 0);
      QVERIFY(!Action("ChangeSizes")->isEnabled() && !Action("Save")->isEnabled());
    }
  }

  void ImportedBoardHasNoFileYet() {
    const QString board = m_folder->filePath("small.kicad_pcb");
    SetContent(board, kBoard);
    m_person->choices = {FromQt(board), FromQt(m_folder->filePath("small.tspcb"))};
    Action("ImportBoard")->trigger();
    QCOMPARE(Tabs(), "small*");
    QVERIFY2(m_person->shown.size() > 1, "the summary names what was mended");
    Action("Save")->trigger();
    QCOMPARE(ToQt(m_person->proposed), m_folder->filePath("small.tspcb"));
    QCOMPARE(Tabs(), "small.tspcb");
    QCOMPARE(ContentOf(board), QByteArray(kBoard));
  }

  void AProjectBringsItsDesigns() {
    const QString file = Copy("amplifier.tsprj", "amplifier.tsprj");
    Copy("amplifier.tsscm", "amplifier.tsscm");
    m_window->Documents().Open(FromQt(file));
    QCOMPARE(Tabs(), "amplifier.tsprj amplifier.tsscm");
    QCOMPARE(m_person->shown.size(), 1u);
    QVERIFY2(m_person->shown[0].find("four-layer.tspcb") != CString::npos, m_person->shown[0].c_str());
    const auto* const project = dynamic_cast<CProject*>(&Current().Technology());
    QVERIFY(project);
    QCOMPARE(project->FilesNotOpen(), CStringArray{"four-layer.tspcb"});

    const QString board = Copy("four-layer.tspcb", "four-layer.tspcb");
    m_window->Documents().Open(FromQt(board));  // later
    QCOMPARE(Current().Design()->GetProject(), project);
    QVERIFY(m_window->Documents().Close(*m_window->Documents().Current()));
    QCOMPARE(project->FilesNotOpen(), CStringArray{"four-layer.tspcb"});
    m_window->Documents().Open(FromQt(Copy("standard.tspcbt", "standard.tspcbt")));
    QCOMPARE(Current().Design()->GetProject(), nullptr);
    QCOMPARE(m_person->shown.size(), 1u);
  }

  void RecentFilesFollowTheirLength() {
    const auto names = [] {
      QStringList list;
      for (const CString& path : CRecentFilesMenu::Files()) list << QFileInfo(ToQt(path)).fileName();
      return list.join(' ');
    };
    for (const char* const name : {"a.tspcb", "b.tspcb", "c.tspcb"})
      m_window->Open({FromQt(Copy("four-layer.tspcb", name))});
    QCOMPARE(names(), "c.tspcb b.tspcb a.tspcb");
    auto* const menu = m_window->findChild<CRecentFilesMenu*>();
    m_window->Documents().Close(*m_window->Documents().Views().front());
    emit menu->aboutToShow();
    menu->actions().at(2)->trigger();
    QCOMPARE(names(), "a.tspcb c.tspcb b.tspcb");
    QCOMPARE(Tabs(), "b.tspcb c.tspcb a.tspcb");
    SetMaxMRUCount(2);
    QCOMPARE(names(), "a.tspcb c.tspcb");
    for (const int odd : {-5, 2'000'000'000}) {
      SetMaxMRUCount(odd);
      QVERIFY(CRecentFilesMenu::Files().size() <= 3);
      emit menu->aboutToShow();
    }
  }

  void DamagedLayoutIsIgnored() {
    m_window->resize(1024, 600);
    m_window->close();
    m_window = std::make_unique<CMainWindow>(DesktopFiles({}));
    QCOMPARE(m_window->size(), QSize(1024, 600));
    m_window.reset();
    for (const char* const value : {"Geometry", "State", "Splitter"})
      CAppRegistry("Desktop").SetValue(value, "AdnQy!!");
    m_window = std::make_unique<CMainWindow>(DesktopFiles({}));
    m_window->Open({FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    QVERIFY(m_window->width() > 600 && m_window->height() > 500);
    QVERIFY(m_window->screen()->availableGeometry().contains(QRect({}, m_window->frameGeometry().size())));
    QVERIFY2(m_window->minimumSizeHint().boundedTo({960, 500}) == m_window->minimumSizeHint(), "a screen at 200 %");
  }

  void TheWindowFollowsBehindADialog() {
    m_window->Open({FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    const CString before = DesignText(*Current().Design());
    m_scope.reset();  // from here on the window's own dialogs
    QVERIFY(Meet([&] { Action("ChangeLayers")->trigger(); },
                 [&](QDialog& sheet) {
                   Type(sheet, "Power", "Name", "Bottom");  // taken
                   QVERIFY(MessageOf([&] { Click(sheet, "Apply"); }, "OK").contains("\"Bottom\""));
                   QCOMPARE(Tabs(), "board.tspcb");
                   Keys("Supply");  // the cell at fault is open
                   Click(sheet, "Apply");
                   QCOMPARE(Tabs(), "board.tspcb*");
                   auto& layers = *m_window->findChild<CLayerList*>();
                   QTRY_COMPARE(layers.findItems("Supply", Qt::MatchExactly).size(), 1);
                   const QAbstractItemModel& records =
                       *m_window->findChild<CTechnologyView*>()->findChild<QTableView*>()->model();
                   QCOMPARE(records.match(records.index(0, 0), Qt::DisplayRole, "Supply").size(), 1);
                   Click(sheet, "Close");
                 }));
    const CString after = DesignText(*Current().Design());
    Action("Undo")->trigger();
    QCOMPARE(DesignText(*Current().Design()), before);
    QCOMPARE(Tabs(), "board.tspcb");
    Action("Redo")->trigger();
    QCOMPARE(DesignText(*Current().Design()), after);
  }

  void HelpOnADialogCanBeClosed() {
    m_window->Open({FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    m_scope.reset();
    QVERIFY(Meet([&] { Action("ChangeLayers")->trigger(); },
                 [&](QDialog& sheet) {
                   Key(Qt::Key_F1);
                   const QPointer<CManualView> manual = sheet.findChild<CManualView*>();
                   QVERIFY(manual && QTest::qWaitForWindowExposed(manual));
                   QTest::keyClick(manual->windowHandle(), Qt::Key_Escape);
                   QTRY_VERIFY(!manual);
                   Click(sheet, "Cancel");
                 }));
  }

  void EverythingWithTheKeyboardHasAName() {
    m_window->Open({FromQt(Copy("four-layer.tspcb", "board.tspcb"))});
    VerifyNames(*m_window, 150);
  }
};

QTEST_MAIN(CMainWindowTest)
#include "mainwindow_test.moc"
