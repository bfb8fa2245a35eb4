// How long the drawing takes to paint, on a board file or on a made board of 100,000 items, and how long a dialog takes
// to open and to follow keys; without a screen.
//
// usage: techsheet-frames [BOARD] [PICTURE.png]
//        techsheet-frames --dialog [ROWS]
#include <QApplication>
#include <QFile>
#include <cstdlib>
#include <cstring>

#include "bench/frames/times.h"
#include "interchange/boardimport.h"
#include "interchange/newrecord.h"
#include "storage/designfile.h"
#include "ui/qt/designview.h"
#include "ui/qt/stackview.h"
#include "ui/qt/technologyview.h"
#include "ui/qt/text.h"

namespace {
constexpr int kItems = 100'000;
constexpr int kFrames = 120;
constexpr int kPitch = 1'000'000;  // between the made items, design units

/// Tracks, pads and vias in turn, in a square.
std::unique_ptr<CDesign> MakeBoard() {
  auto board = std::make_unique<CPcbDesign>();
  board->Journal().SetRecording(false);
  CNet* const net = board->AddNet("N", board->netClasses.First());
  CTrack& track = AddRecord(net->Tracks(), {.defaultStyle = board->trackStyles.First()});
  CLayer* const layers[] = {board->FindLayer("Top"), board->FindLayer("Bottom")};
  constexpr int kSide = 316;
  for (int i = 0; i < kItems; ++i) {
    const CPoint at{i % kSide * kPitch, i / kSide * kPitch};
    switch (i % 4) {
      case 0: AddRecord(net->Vias(), {.style = board->padStyles.First(), .position = at}); break;
      case 1:
        AddRecord(
            board->freePads,
            {.name = {"P" + IntText(i)}, .style = board->padStyles.First(), .position = at, .side = {ELayerSide::Top}});
        break;
      default:
        AddRecord(track.Segments(), {.layer = layers[i % 2],
                                     .style = board->trackStyles.First(),
                                     .start = at,
                                     .end = {at.x + kPitch, at.y + kPitch}});
    }
  }
  board->Journal().SetRecording(true);
  return board;
}

std::unique_ptr<CTechnology> Open(const CString& path) {
  if (path.ends_with(".kicad_pcb")) {
    CResult<SImportedBoard, SImportError> board = ImportBoard(path);
    if (board) return std::move(board->design);
    std::fprintf(stderr, "%s\n", board.Error().Text().c_str());
    return nullptr;
  }
  return std::unique_ptr<CTechnology>(CDesign::ReadDesign(path));
}
}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  InstallFileAccess();
  if (argc > 1 && std::strcmp(argv[1], "--dialog") == 0) {
    MeasureDialog(argc > 2 ? std::atoi(argv[2]) : 1000);
    return 0;
  }
  std::unique_ptr<CTechnology> opened;
  if (argc > 1 && argv[1][0] != '-') opened = Open(argv[1]);
  else opened = MakeBoard();
  auto* const design = dynamic_cast<CDesign*>(opened.get());
  if (!design) return 1;
  CDesignDrawing drawing(design);
  CDesignView view(drawing);
  view.resize(1600, 1000);
  view.show();
  QApplication::processEvents();  // a widget paints from when it is exposed
  const auto paint = [&] { view.repaint(); };
  std::printf("%zu drawn items\n", view.DrawnCount());
  STimes(5, [&](int) {
    view.Invalidate(nullptr);
    paint();
  }).Print("list built anew and all painted");
  STimes(20, [&](int i) {
    view.Zoom(i % 2 ? 1.25 : 0.8, {800, 500});
    paint();
  }).Print("zoom step, everything in view");
  const auto pan = [&](int i) {
    view.Pan({i % 60 < 30 ? 12 : -12, i % 40 < 20 ? 7 : -7});
    paint();
  };
  STimes(kFrames, pan).Print("pan by 12, 7 pixels, all in view");
  view.Zoom(8, {800, 500});
  paint();
  STimes(kFrames, pan).Print("pan by 12, 7 pixels, zoomed in");
  if (argc > 2) {
    view.Fit();
    paint();
    const QString name = QString::fromLocal8Bit(argv[2]);
    view.grab().save(name);
    CTechnologyView technology(*design);
    technology.resize(1100, 900);
    technology.grab().save(QString(name).replace(".png", "-technology.png"));
    view.Zoom(6, {800, 500});
    view.grab().save(QString(name).replace(".png", "-near.png"));
  }
  return 0;
}
