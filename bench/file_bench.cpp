#include <malloc.h>
#include <simdjson.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "bench/table.h"
#include "storage/checkedwriter.h"
#include "storage/designfile.h"

namespace {
namespace json = simdjson::ondemand;

// A board whose file has 50 MB: segments are what large boards consist of.
constexpr int kNets = 2'000;
constexpr int kSegmentsOfNet = 250;
constexpr double kSegments = double{kNets} * kSegmentsOfNet;

std::unique_ptr<CPcbDesign> MakeBoard() {
  auto design = std::make_unique<CPcbDesign>();
  design->Journal().SetRecording(false);
  std::mt19937 random(1);
  const auto place = [&random] {
    return CPoint{static_cast<int>(random() % 400'000'000), static_cast<int>(random() % 400'000'000)};
  };
  CLayer* const layers[] = {design->FindLayer("Top"), design->FindLayer("Bottom")};
  std::vector<CTrackStyle*> styles;
  for (int i = 0; i < 10; ++i) styles.push_back(design->AddTrackStyle("Track " + IntText(i), i));
  for (int i = 0; i < kNets; ++i) {
    auto& segments = design->AddNet("Net " + IntText(i), nullptr)->Tracks().Add(CTrack())->Segments();
    CPoint at = place();
    for (int k = 0; k < kSegmentsOfNet; ++k) {
      CTrackSegment segment;
      segment.Set(&STrackSegmentFields::layer, layers[k % 2]);
      segment.SetStyle(styles[random() % styles.size()]);
      segment.Set(&STrackSegmentFields::start, at);
      segment.Set(&STrackSegmentFields::end, at = place());
      segments.Add(segment);
    }
  }
  design->Journal().SetRecording(true);
  return design;
}

const CPcbDesign& Board() {
  static const std::unique_ptr<CPcbDesign> board = MakeBoard();
  return *board;
}

/// The file, removed at the end of the program.
class CBoardFile {
 public:
  CBoardFile() : m_path(std::filesystem::temp_directory_path() / ("techsheet-bench-" + IntText(getpid()))) {
    if (!WriteDesignFile(m_path, *MakeBoard())) std::abort();
  }
  ~CBoardFile() { std::filesystem::remove(m_path); }
  CBoardFile(const CBoardFile&) = delete;
  CBoardFile& operator=(const CBoardFile&) = delete;
  CString Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};
const CBoardFile& BoardFile() {
  static const CBoardFile file;
  return file;
}

void ReadFile(benchmark::State& state) {
  const CString path = BoardFile().Path();
  for (auto _ : state) {
    CResult<std::unique_ptr<CTechnology>> read = ReadDesignFile(path);
    state.PauseTiming();
    if (read) {
      read->reset();
    } else {
      state.SkipWithError("the file cannot be read");
    }
    state.ResumeTiming();
  }
}

CPoint PointOf(json::value value) {
  std::array<std::int64_t, 2> numbers{};
  std::size_t count = 0;
  for (auto number : value.get_array()) numbers[count++] = number.get_int64();
  return {static_cast<int>(numbers[0]), static_cast<int>(numbers[1])};
}

/// Takes everything on trust and knows the one kind of file that it reads.
void ReadNets(json::document& document, CPcbDesign& design) {
  for (json::object one : document["nets"].get_array()) {
    auto net = std::make_unique<CNet>();
    net->SetName(CString(one["name"].get_string().value()));
    for (json::object oneTrack : one["tracks"].get_array()) {
      auto track = std::make_unique<CTrack>();
      for (json::object oneSegment : oneTrack["segments"].get_array()) {
        auto segment = std::make_unique<CTrackSegment>();
        segment->Set(&STrackSegmentFields::layer, design.FindLayer(CString(oneSegment["layer"].get_string().value())));
        segment->SetStyle(design.trackStyles.Find(oneSegment["style"].get_string().value()));
        segment->Set(&STrackSegmentFields::start, PointOf(oneSegment["start"]));
        segment->Set(&STrackSegmentFields::end, PointOf(oneSegment["end"]));
        track->Segments().Append(std::move(segment));
      }
      net->Tracks().Append(std::move(track));
    }
    design.nets.Append(std::move(net));
  }
}
void ReadOnDemand(benchmark::State& state) {
  const CString path = BoardFile().Path();
  for (auto _ : state) {
    auto design = std::make_unique<CPcbDesign>();
    design->Journal().SetRecording(false);
    simdjson::padded_string text = simdjson::padded_string::load(path);
    json::parser parser;
    json::document document = parser.iterate(text);
    for (json::object style : document["trackStyles"].get_array())
      design->AddTrackStyle(CString(style["name"].get_string().value()), 0);
    ReadNets(document, *design);
    state.PauseTiming();
    if (design->nets.Count() != kNets) state.SkipWithError("not all was read");
    design.reset();
    state.ResumeTiming();
  }
}

void WriteText(benchmark::State& state) {
  Board();
  for (auto _ : state) {
    const CString text = DesignText(Board());
    benchmark::DoNotOptimize(text.data());
  }
}

void AppendPoint(CString& text, CPoint point) {
  text += '[';
  AppendInt(text, point.x);
  text += ',';
  AppendInt(text, point.y);
  text += ']';
}
void WriteOneBuffer(benchmark::State& state) {
  Board();
  for (auto _ : state) {
    CString text = "{\"nets\":[";
    for (const CNet& net : Board().nets) {
      ((text += "\n {\"name\":\"") += net.GetName()) += "\",\n  \"tracks\":[";
      for (CTrack& track : const_cast<CNet&>(net).Tracks()) {
        text += "\n   {\"segments\":[";
        for (const CTrackSegment& segment : track.Segments()) {
          const STrackSegmentFields& fields = segment.Values();
          ((text += "\n     {\"layer\":\"") += fields.layer.Get()->GetName()) += "\",\"style\":\"";
          (text += fields.style.Get()->GetName()) += "\",\"start\":";
          AppendPoint(text, fields.start);
          text += ",\"end\":";
          AppendPoint(text, fields.end);
          text += "},";
        }
        text += "]},";
      }
      text += "]},";
    }
    text += "]}\n";
    benchmark::DoNotOptimize(text.data());
  }
}

// ---- Memory

/// Bytes that this process has, or had at most, in memory: "VmRSS:" or "VmHWM:".
double Memory(const CString& which) {
  std::ifstream status("/proc/self/status");
  for (CString word; status >> word;) {
    double kilobytes = 0;
    if (word == which && status >> kilobytes) return kilobytes * 1024;
  }
  return 0;
}
void PeakOfReading(benchmark::State& state) {
  constexpr const char* kForgetPeak = "5";
  const CString path = BoardFile().Path();
  double most = 0;
  for (auto _ : state) {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << kForgetPeak;
    const double before = Memory("VmRSS:");
    const CResult<std::unique_ptr<CTechnology>> read = ReadDesignFile(path);
    most = std::max(most, Memory("VmHWM:") - before);
  }
  state.counters[kAmount] = most / 1e6;
}
void SizeOfFile(benchmark::State& state) {
  const auto size = static_cast<double>(std::filesystem::file_size(BoardFile().Path()));
  for (auto _ : state) benchmark::DoNotOptimize(size);
  state.counters[kAmount] = size / 1e6;
}

}  // namespace

std::span<const SRow> FileRows() {
  static constexpr SRow kRows[] = {
      {"Read a design file, a segment / simdjson to records", kSegments, ReadFile, ReadOnDemand, 2},
      {"Read a design file, peak memory / its size", 1, PeakOfReading, SizeOfFile, 4.4, 0, "MB"},
      {"Write a design file, a segment / one buffer", kSegments, WriteText, WriteOneBuffer, 1.7},
  };
  return kRows;
}
