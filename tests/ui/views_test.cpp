// The drawn views, looked at as a person does: by the pixels they show and by what a click selects.
#include <QAbstractItemModelTester>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTreeWidgetItemIterator>
#include <QWheelEvent>
#include <set>

#include "commands/commands.h"
#include "interchange/newrecord.h"
#include "ui/qt/designview.h"
#include "ui/qt/layerlist.h"
#include "ui/qt/padview.h"
#include "ui/qt/stackview.h"
#include "ui/qt/technologyview.h"
#include "ui/qt/text.h"

#pragma GCC diagnostic ignored "-Wmissing-field-initializers"  // records name the fields that differ

namespace {
constexpr int kMm = 1'000'000;
constexpr CPoint kSquareAt{0, 0}, kViaAt{10 * kMm, 0}, kSlotAt{0, 10 * kMm}, kTrackAt{10 * kMm, 10 * kMm};
constexpr CPoint kFreeViaAt{5 * kMm, 0};

/// A square pad on the top, a via, a turned slot, a track on the bottom, and the corners of a board.
class CBoardUnderTest {
 public:
  CPcbDesign design;
  CLayer* top = design.FindLayer("Top");
  CLayer* bottom = design.FindLayer("Bottom");
  CPadStyle* square;
  CFreePad* pad;
  CVia* via;
  CFreePad* slot;
  CTrackSegment* segment;

  CBoardUnderTest() {
    design.Journal().SetRecording(false);
    top->SetColour({0xC00000});
    bottom->SetColour({0x0000C0});
    design.FindBuiltInLayer()->SetColour({0x00C000});
    square = &AddRecord(design.padStyles,
                        {.name = {"Square"}, .shape = {EPadShape::Square}, .size = {2 * kMm}, .drillWidth = {0}});
    CPadStyle& round = AddRecord(design.padStyles, {.name = {"Round"}, .size = {2 * kMm}, .drillWidth = {kMm}});
    CPadStyle& oblong = AddRecord(
        design.padStyles,
        {.name = {"Oblong"}, .shape = {EPadShape::Rectangle}, .size = {4 * kMm}, .length = {kMm}, .drillWidth = {0}});
    pad =
        &AddRecord(design.freePads, {.name = {"P"}, .style = square, .position = kSquareAt, .side = {ELayerSide::Top}});
    slot = &AddRecord(
        design.freePads,
        {.name = {"S"}, .style = &oblong, .position = kSlotAt, .angle = CAngle(90'000), .side = {ELayerSide::Top}});
    CNet* const net = design.AddNet("N", design.netClasses.First());
    via = &AddRecord(net->Vias(), {.style = &round, .position = kViaAt});
    AddRecord(design.freeVias, {.style = &round, .position = kFreeViaAt});
    CTrackStyle* const wide = design.AddTrackStyle("Wide", kMm);
    CTrack& track = AddRecord(net->Tracks(), {.defaultStyle = wide});
    segment = &AddRecord(track.Segments(), {.layer = bottom,
                                            .style = wide,
                                            .start = {kTrackAt.x - 2 * kMm, kTrackAt.y},
                                            .end = {kTrackAt.x + 2 * kMm, kTrackAt.y}});
    AddRecord(design.boards,
              {.points = {{-5 * kMm, -5 * kMm}, {15 * kMm, -5 * kMm}, {15 * kMm, 15 * kMm}, {-5 * kMm, 15 * kMm}},
               .closed = true});
    design.Journal().SetRecording(true);
    view.resize(400, 400);
    view.show();
    view.Fit();
  }

  QRgb PixelAt(CPoint point) { return view.grab().toImage().pixel(view.PlaceOf(point).toPoint()) & 0xFFFFFF; }
  void Click(CPoint point, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(&view, Qt::LeftButton, keys, view.PlaceOf(point).toPoint());
  }
  void Frame(CPoint from, CPoint to) {
    const QPoint a = view.PlaceOf(from).toPoint(), b = view.PlaceOf(to).toPoint();
    QTest::mousePress(&view, Qt::LeftButton, {}, a);
    QTest::mouseMove(&view, b);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, b);
  }

  CDesignDrawing drawing{&design};
  CDesignView view{drawing};
};

constexpr QRgb kRed = 0xC00000, kGreen = 0x00C000, kBlue = 0x0000C0, kBlack = 0;
}  // namespace

class CViewsTest : public QObject {
  Q_OBJECT

 private slots:
  void ItemsHaveTheirShapesInTheColoursOfTheirLayers() {
    CBoardUnderTest board;
    struct SProbe {
      const char* what;
      CPoint at;
      QRgb colour;
    };
    const SProbe probes[] = {
        {"middle of the square", kSquareAt, kRed},
        {"corner of the square", {800'000, 800'000}, kRed},
        {"beside the square", {1'400'000, 0}, kBlack},
        {"ring of the via", {kViaAt.x + 750'000, kViaAt.y}, kGreen},
        {"hole of the via", kViaAt, kBlack},
        {"ring of a via without a net", {kFreeViaAt.x + 750'000, kFreeViaAt.y}, kGreen},
        {"corner that a round via lacks", {kViaAt.x + 850'000, kViaAt.y + 850'000}, kBlack},
        {"far end of the turned pad", {kSlotAt.x, kSlotAt.y + 1'700'000}, kRed},
        {"where the pad would lie unturned", {kSlotAt.x + 1'700'000, kSlotAt.y}, kBlack},
        {"track", {kTrackAt.x + kMm, kTrackAt.y + 300'000}, kBlue},
        {"beside the track", {kTrackAt.x, kTrackAt.y + 800'000}, kBlack},
    };
    for (const SProbe& probe : probes)
      QVERIFY2(board.PixelAt(probe.at) == probe.colour,
               qPrintable(QString("%1: #%2").arg(probe.what).arg(board.PixelAt(probe.at), 6, 16, QChar('0'))));
  }

  void AnExceptionOfAPadCountsOnItsLayerAlone() {
    CBoardUnderTest board;
    AddRecord(board.square->Exceptions(), {.layer = board.top, .shape = {EPadShape::Round}, .size = {kMm}});
    board.view.Invalidate(nullptr);
    QCOMPARE(board.PixelAt(kSquareAt), kRed);
    QCOMPARE(board.PixelAt({800'000, 800'000}), kBlack);
  }

  void WhatIsHiddenIsNeitherDrawnNorSelected() {
    CBoardUnderTest board;
    CLayerList list(board.design);
    const auto rowOf = [&](const QString& name) {
      QTreeWidgetItemIterator at(&list);
      while (*at && (*at)->text(0) != name) ++at;
      return *at;
    };
    const std::uint64_t entries = board.design.Journal().Revision();
    rowOf("Top")->setCheckState(0, Qt::Unchecked);
    rowOf(QtText(Text::Vias))->setCheckState(0, Qt::Unchecked);  // vias
    board.view.Invalidate(nullptr);
    QCOMPARE(board.PixelAt(kSquareAt), kBlack);
    QCOMPARE(board.PixelAt({kViaAt.x + 750'000, kViaAt.y}), kBlack);
    QCOMPARE(board.PixelAt(kTrackAt), kBlue);
    QVERIFY(!board.view.ItemAt(board.view.PlaceOf(kSquareAt)));
    QVERIFY2(board.design.Journal().Revision() == entries && !board.design.GetChanged(),
             "looking at a design is no change");
    rowOf("Top")->setCheckState(0, Qt::Checked);
    board.view.Invalidate(nullptr);
    QCOMPARE(board.PixelAt(kSquareAt), kRed);
  }

  void TheLayerListKeepsItsPlace() {
    CBoardUnderTest board;
    CLayerList list(board.design);
    list.resize(200, 80);
    list.show();
    const QString vias = QtText(Text::Vias);
    QTreeWidgetItem* const group = list.topLevelItem(list.topLevelItemCount() - 1);
    list.setCurrentItem(group->child(1));
    QCOMPARE(list.currentItem()->text(0), vias);
    const int scrolled = list.verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    list.Refresh();
    QCOMPARE(list.verticalScrollBar()->value(), scrolled);
    CLayer glue;
    glue.SetName("Glue");
    board.design.StartUndoLevel(1);
    board.design.AddLayer(&glue);
    list.Refresh();
    QCOMPARE(list.findItems("Glue", Qt::MatchExactly).size(), 1);
    group->setExpanded(false);
    board.design.UndoNestedLevel(1);
    list.Refresh();
    QCOMPARE(list.findItems("Glue", Qt::MatchExactly).size(), 0);
    QVERIFY(list.currentItem()->text(0) == vias && !group->isExpanded());
  }

  void AColourGivenInTheListIsAStepThatCanBeTakenBack() {
    CBoardUnderTest board;
    CLayerList list(board.design);
    int asked = 0;
    list.chooseColour = [&](const CLayer&) { return CColour{++asked == 1 ? 0x111111u : 0x00C0C0u}; };
    list.show();
    QTreeWidgetItem* const top = list.findItems("Top", Qt::MatchExactly).value(0);
    emit list.itemDoubleClicked(top, 0);  // of the check mark
    QCOMPARE(asked, 0);
    list.setCurrentItem(top);
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(asked, 1);
    QVERIFY(board.design.Undo());
    emit list.itemDoubleClicked(top, 1);
    board.view.Invalidate(nullptr);
    QCOMPARE(board.PixelAt(kSquareAt), QRgb{0x00C0C0});
    QVERIFY(board.design.Undo());
    board.view.Invalidate(nullptr);
    QCOMPARE(board.PixelAt(kSquareAt), kRed);
  }

  void ZoomingKeepsThePlaceUnderThePointer() {
    CBoardUnderTest board;
    for (const int turned : {120, 120, -240, 600}) {
      const QPointF at(311, 97);
      const CPoint before = board.view.PointAt(at);
      QWheelEvent wheel(at, board.view.mapToGlobal(at), {}, {0, turned}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(&board.view, &wheel);
      const CPoint after = board.view.PointAt(at);
      QVERIFY(std::abs(before.x - after.x) <= 1 && std::abs(before.y - after.y) <= 1);
    }
    AddRecord(board.design.texts, {.text = "far off", .layer = board.top, .position = {900 * kMm, 0}});
    QTest::keyClick(&board.view, Qt::Key_Home);
    QCOMPARE(board.PixelAt(kSquareAt), kRed);
    QVERIFY2(board.view.PlaceOf(kViaAt).x() - board.view.PlaceOf(kSquareAt).x() > 150, "the board fills the view");
  }

  void APannedPictureIsThatOfAFreshView() {
    CBoardUnderTest board;
    board.view.Zoom(3, {200, 200});
    board.view.grab();
    QTest::mousePress(&board.view, Qt::MiddleButton, {}, {200, 200});
    for (const QPoint to : {QPoint(180, 233), QPoint(57, 240), QPoint(90, 10)}) {
      QTest::mouseMove(&board.view, to);
      board.view.grab();
    }
    QTest::mouseRelease(&board.view, Qt::MiddleButton, {}, {90, 10});
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Up}) QTest::keyClick(&board.view, key);
    const QImage panned = board.view.grab().toImage();
    board.view.Invalidate(nullptr);
    QCOMPARE(panned, board.view.grab().toImage());
  }

  void ClickAndFrameSelect() {
    CBoardUnderTest board;
    QSignalSpy changed(&board.view, &CDesignView::SelectionChanged);
    CSelectionOverview& selection = board.design.Selection();
    using Items = std::vector<CDesignItem*>;
    const std::uint64_t entries = board.design.Journal().Revision();
    board.Click(kSquareAt);
    QVERIFY(selection.Items() == Items{board.pad});
    board.Click(kTrackAt);
    QVERIFY(selection.Items() == Items{board.segment});
    board.Click({kViaAt.x + 750'000, kViaAt.y}, Qt::ControlModifier);
    QVERIFY(selection.Items() == (Items{board.segment, board.via}));
    board.Click({5 * kMm, 5 * kMm});
    QVERIFY(selection.Items().empty());
    board.Frame({-2 * kMm, -2 * kMm}, {2 * kMm, 11 * kMm});  // the turned pad reaches out
    QVERIFY(selection.Items() == Items{board.pad});
    board.Frame({2 * kMm, -2 * kMm}, {-2 * kMm, 11 * kMm});
    QCOMPARE(selection.Items().size(), std::size_t{2});
    QCOMPARE(changed.count(), 6);
    QVERIFY(board.view.accessibleDescription().contains('2'));
    QVERIFY(board.design.Journal().Revision() == entries);
    QTest::keyClick(&board.view, Qt::Key_Escape);
    QVERIFY(selection.Items().empty());
  }

  void AClickSelectsTheSmallest() {
    CBoardUnderTest board;
    CPadStyle& large = AddRecord(board.design.padStyles, {.name = {"Large"}, .size = {4 * kMm}, .drillWidth = {0}});
    AddRecord(board.design.freePads, {.style = &large, .position = kSquareAt, .side = {ELayerSide::Top}});
    AddRecord(board.design.shapes, {.layer = board.top, .points = {{-kMm, -kMm}, {60 * kMm, 60 * kMm}}});
    board.view.Invalidate(nullptr);
    const auto isSelected = [&](CPoint at, const CDesignItem& item) {
      board.Click(at);
      return board.design.Selection().Items() == std::vector<CDesignItem*>{const_cast<CDesignItem*>(&item)};
    };
    QVERIFY2(isSelected({-800'000, 800'000}, *board.pad), "the larger one is painted above it");
    QVERIFY2(isSelected(kSquareAt, *board.design.shapes.First()), "a thin line across both, however long");
  }

  void TheCursorFollowsItsStyle() {
    CBoardUnderTest board;
    const auto cross = [&] {  // beside the pointer, where nothing is drawn
      QTest::mouseMove(&board.view, {60, 61});
      return board.view.grab().toImage().pixel(60, 8) & 0xFFFFFF;
    };
    CDesignDrawing::SetCursor(0);
    std::set<std::tuple<int, int, QRgb>> looks;  // shape, width of the picture, and what is drawn
    for (int style = 0; style < 4; ++style, ChangeCursor()) {
      const QRgb drawn = cross();
      looks.insert({board.view.cursor().shape(), board.view.cursor().pixmap().width(), drawn});
      QCOMPARE(drawn == 0xFFFFFF, style == 1);
    }
    QCOMPARE(looks.size(), std::size_t{4});
    QCOMPARE(cross(), kBlack);
  }

  void InvalidateRedrawsWhatItNames() {
    CBoardUnderTest board;
    QCOMPARE(board.PixelAt({1'400'000, 0}), kBlack);
    board.design.StartUndoLevel(1);
    board.square->SetSize(4 * kMm);
    const CBox around{-3 * kMm, -3 * kMm, 3 * kMm, 3 * kMm};
    board.view.Invalidate(&around);
    QCOMPARE(board.PixelAt({1'400'000, 0}), kRed);
    board.design.UndoNestedLevel(1);
    board.view.Invalidate(&around);
    QCOMPARE(board.PixelAt({1'400'000, 0}), kBlack);
  }

  void ItemsAtTheEndsOfTheRangeAreDrawn() {
    CPcbDesign design;
    constexpr int kEnd = std::numeric_limits<int>::max();
    design.FindLayer("Top")->SetColour({kRed});
    AddRecord(design.shapes,
              {.layer = design.FindLayer("Top"), .width = {300 * kMm}, .points = {{-kEnd, -kEnd}, {kEnd, kEnd}}});
    CDesignDrawing drawing(&design);
    CDesignView view(drawing);
    view.resize(300, 300);
    view.Fit();
    QCOMPARE(view.grab().toImage().pixel(150, 150) & 0xFFFFFF, kRed);
    for (int i = 0; i < 60; ++i) view.Zoom(2, {150, 150});
    QCOMPARE(view.grab().toImage().pixel(150, 150) & 0xFFFFFF, kRed);
  }

  void TheTechnologyIsCountedAndSaysWhatUsesIt() {
    CBoardUnderTest board;
    CTechnologyView view(board.design);
    auto* const table = view.findChild<QTableView*>();
    const QAbstractItemModelTester tester(table->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    const auto usedBy = [&](int row) {
      return table->model()->index(row, table->model()->columnCount() - 1).data().toString();
    };
    QVERIFY(view.Choose("padStyles"));
    QCOMPARE(table->model()->rowCount(), static_cast<int>(board.design.padStyles.Count()));
    QVERIFY2(usedBy(1).contains("\"P\""), qPrintable(usedBy(1)));
    QVERIFY(view.Choose("trackStyles"));
    QVERIFY2(usedBy(1).contains("Track segment"), qPrintable(usedBy(1)));
    QVERIFY(view.Choose("nets.tracks.segments"));
    QCOMPARE(table->model()->rowCount(), 1);
    QCOMPARE(table->model()->index(0, 0).data().toString(), QString("N"));
    QVERIFY(view.Choose("padStyles"));
    board.design.AddPadStyle(board.square);
    QVERIFY2(!table->model()->index(0, 0).data().isValid(), "records may be gone when the design has changed");
    view.Refresh();
    QCOMPARE(table->model()->rowCount(), static_cast<int>(board.design.padStyles.Count()));
    auto* const tree = view.findChild<QTreeWidget*>();
    QCOMPARE(tree->currentItem()->text(1).toInt(), static_cast<int>(board.design.padStyles.Count()));
  }

  void TheStackMarksTheCurrentLayerAndShowsColours() {
    CBoardUnderTest board;
    board.design.AddLayerSpan("Through", board.top, board.bottom);
    SStackPreview stack = StackOf(board.design);
    QCOMPARE(stack.layers.size(), std::size_t{2});
    stack.layers[1].current = true;
    CStackView view;
    view.resize(400, 300);
    view.SetStack(stack);
    const QImage picture = view.grab().toImage();
    const auto has = [&](QRgb colour) {
      for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
          if ((picture.pixel(x, y) & 0xFFFFFF) == colour) return true;
      return false;
    };
    QVERIFY(has(kRed) && has(kBlue));
    const QStringList lines = view.accessibleDescription().split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].startsWith("Bottom") && lines[1] != "Bottom: " + lines[0].section(": ", 1));
    QVERIFY(lines[2].contains("Through") && lines[2].contains("Top") && lines[2].contains("Bottom"));
    view.show();
    view.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    view.clearFocus();
    const QImage without = view.grab().toImage();
    view.setFocus();
    QVERIFY2(view.grab().toImage() != without, "where the keyboard is can be seen");
    stack.spans[0].bottom = -1;  // not chosen yet
    view.SetStack(stack);
    view.grab();
  }

  void APadIsWrittenInTheUnitsGiven() {
    CPadView view;
    SPadPreview pad{};
    pad.shape = EPadShape::Rectangle;
    pad.width = 2'540'000;
    pad.length = 1'270'000;
    view.SetPad(pad);
    QVERIFY(view.accessibleDescription().contains("2.540 mm x 1.270 mm"));
    view.SetUnits(CUnits(EUnitType::Mil, 0));
    QVERIFY(view.accessibleDescription().contains("100 mil x 50 mil"));
  }
};

QTEST_MAIN(CViewsTest)
#include "views_test.moc"
