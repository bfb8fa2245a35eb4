// What tests of the pages of the technology dialog have in common.
#pragma once
#include <gtest/gtest.h>

#include "commands/commands.h"
#include "model/services/application.h"
#include "model/services/files.h"
#include "model/services/registry.h"
#include "support/scripteduser.h"
#include "support/statetext.h"
#include "technology/sheet/sizesdialog.h"

/// The parts of a text between separators.
inline CStringArray Split(const CString& text, const CString& separator) {
  CStringArray parts;
  std::size_t at = 0;
  for (std::size_t end; (end = text.find(separator, at)) != CString::npos; at = end + separator.size())
    parts.push_back(text.substr(at, end - at));
  parts.push_back(text.substr(at));
  return parts;
}

/// "Row|Column|text" types into a cell, "Row|Column" goes there, and "Command" presses; "; " stands between several.
/// A row is named by a text in it or by its number.
inline void Do(CShownPanel& page, const char* steps) {
  for (const CString& step : Split(steps, "; ")) {
    const CStringArray parts = Split(step, "|");
    std::int64_t number = 0;
    const SGridName row = ParseInt(parts[0], number) ? SGridName(static_cast<int>(number)) : SGridName(parts[0]);
    if (parts.size() == 1) page.Press(step.c_str());
    if (parts.size() == 2) page.Go(row, parts[1]);
    if (parts.size() == 3) page.Type(row, parts[1], parts[2]);
  }
}

/// A design that a person works on, in the editions Pellam, with one file, held in memory.
template <class Design>
class CPageTest : public ::testing::Test {
 protected:
  using Script = std::function<void(CShownPanel&)>;

  CPageTest() {
    InstallFiles({[this](const CString&, std::size_t) { return file; },
                  [this](const CString&, std::string_view text) { return file = text, CResult<void>(); }});
  }
  ~CPageTest() override {
    InstallFiles({});
    InstallSettingsStore(nullptr);
    CApplication::SetEditions({"Pellam"});
  }

  /// Opens the dialog, does what the script says, and presses the commands while it is open.
  void WorkInSheet(const std::function<void(CShownDialog&)>& script, const std::vector<const char*>& commands) {
    ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
      script(dialog);
      for (const char* pressed : commands)
        if (dialog.IsOpen()) dialog.Press(pressed);
    });
    ChangeSizes(&design);
  }
  /// The same, on one page.
  template <class Page>
  void Work(const Script& script, const std::vector<const char*>& commands) {
    WorkInSheet(
        [&](CShownDialog& dialog) {
          CShownPanel page = dialog.Show<Page>();
          script(page);
        },
        commands);
  }
  /// Does to the form that `command` opens what the script says.
  template <class Form>
  void WorkInForm(CShownPanel& page, const char* command, CScriptedUser::CScript script) {
    ui.WhenShown<Form>(std::move(script));
    page.Press(command);
  }

  Design design;
  CString file;
  CScriptedUser ui;
};

/// How a test that is written for any page opens it.
using PageShown = CShownPanel (*)(CShownDialog& dialog);
template <class Page>
CShownPanel ShowPage(CShownDialog& dialog) {
  return dialog.Show<Page>();
}

/// A board with something on every page:
///   layers 1 [All layers], 2 Top (of type Copper), 3 Core, 4 Bottom, 5 Glue (with a text), 6 Notes; the net GND,
///   poured layer types 1 Copper, 2 Silk          layer spans 1 Blind (Top to Core), 2 Through track styles 1 Default,
///   2 Power, 3 Signal, 4 [Guide]          text styles 1 Default, 2 Notes, 3 [Drill Table] pad styles 1 Chip, 2
///   Default, 3 Header with exceptions 4 Core and 5 Top, 6 Jack (a slot), 7 [Guide]
class CBoardTest : public CPageTest<CPcbDesign> {
 protected:
  CBoardTest() {
    net = design.AddNet("GND", design.GetDefaults()->GetNetClass());
    AddType("Copper", ELayerUsage::Electrical);
    CLayerType& silk = AddType("Silk", ELayerUsage::Documentation);
    silk.SetViasEnabled(false);
    silk.SetOversizeType(EOversizeType::ByAmount);
    silk.SetOversize(123'457);
    Layer("Top").SetType(design.FindLayerType("Copper"));
    AddLayer("Core", ELayerSide::Inner, ELayerUsage::Electrical);
    AddLayer("Glue", ELayerSide::All, ELayerUsage::Documentation);
    AddLayer("Notes", ELayerSide::All, ELayerUsage::Documentation);
    design.SetDefaultLayerOrder();
    design.AddLayerSpan("Blind", &Layer("Top"), &Layer("Core"));
    design.AddLayerSpan("Through", &Layer("Top"), &Layer("Bottom"));
    AddItems();
    design.AddTrackStyle("Signal", 100'000);
    design.AddTrackStyle("Power", 500'000);
    design.AddTrackStyle("[Guide]", 10'000);
    CTextStyle notes;
    notes.SetName("Notes");
    notes.SetWidth(2'000'000);
    design.AddTextStyle(&notes);
    AddPadStyles();
    design.ResetUndoLevels();
  }
  CLayerType& AddType(const char* name, int usage) {
    CLayerType type;
    type.SetName(name);
    type.SetUsage(usage);
    return *design.AddLayerType(&type);
  }
  void AddLayer(const char* name, int side, int usage) {
    CLayer layer;
    layer.SetName(name);
    layer.SetSide(side);
    layer.SetUsage(usage);
    design.AddLayer(&layer);
  }
  void AddItems() {
    CFreeText text;
    text.Set(&SFreeTextFields::style, design.GetDefaults()->GetTextStyle());
    text.Set(&SFreeTextFields::layer, &Layer("Glue"));
    design.texts.Add(text);
    CPourTemplate pour;
    pour.Set(&SPourTemplateFields::net, net);
    pour.Set(&SPourTemplateFields::poured, true);
    CArea area;
    area.Set(&SAreaFields::layer, &Layer("Top"));
    area.PourTemplates().Add(pour);
    design.areas.Add(area);
  }
  void AddPadStyles() {
    CPadStyle& header = AddPad("Header", EPadShape::Round, 1'700'000, 0);
    header.SetDrillWidth(1'000'000);
    for (const char* layer : {"Core", "Top"}) {
      CPadStyleException exception;
      exception.SetLayer(&Layer(layer));
      exception.SetSize(1'900'000);
      header.AddException(&exception);
    }
    CPadStyle& jack = AddPad("Jack", EPadShape::Oval, 2'200'000, 4'200'000);
    jack.SetDrillShape(EDrillShape::Slot);
    jack.SetDrillWidth(1'000'000);
    jack.SetDrillLength(3'000'000);
    AddPad("Chip", EPadShape::RoundedRectangle, 1'000'000, 1'450'000).SetDimension3(250'000);
    AddPad("[Guide]", EPadShape::Square, 500'000, 0);
  }
  CPadStyle& AddPad(const char* name, int shape, int size, int length) {
    CPadStyle style;
    style.SetName(name);
    style.SetShape(shape);
    style.SetSize(size);
    style.SetLength(length);
    return *design.AddPadStyle(&style);
  }
  CLayer& Layer(const char* name) { return *design.FindLayer(name); }
  CPadStyle& Pad(const char* name) { return *design.FindPadStyle(name); }
  CVia& AddVia(const char* style) {
    CVia via;
    via.Set(&SViaFields::style, &Pad(style));
    return *net->Vias().Add(via);
  }
  CTrackSegment& AddSegment(const char* style) {
    CTrackSegment segment;
    segment.SetStyle(design.FindTrackStyle(style));
    return *net->Tracks().Add(CTrack())->Segments().Add(segment);
  }

  CNet* net = nullptr;
};
