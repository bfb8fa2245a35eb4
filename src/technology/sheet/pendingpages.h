// The pages of the technology dialog that this version does not have yet: a title, and an empty grid that says so.
#pragma once
#include "technology/techpage.h"

class CNoRows final : public CGridRows {
 public:
  CNoRows(CTechDialogPage& page, const CString& settings) : CGridRows(page, "grid", settings) {
    constexpr int kWidth = 400;  // pixels
    m_grid.SetColumns({{Text::PagePending, {}, EAlign::Left, kWidth}});
  }
  void Fill() override {}
  std::optional<SFinding> Write(const CFindings&, int) override { return {}; }
};

class CPendingPage : public CTechDialogPage {
  TECHSHEET_CLASS(CPendingPage, CTechDialogPage)
  CPendingPage(CDesign& design, CTextId title, const CString& settings)
      : CTechDialogPage(design, {.title = title}), m_rows(*this, settings) {
    AddRows(m_rows);
  }

 private:
  CNoRows m_rows;
};

#define TECHSHEET_PENDING_PAGE(Class, title, settings)                         \
  class Class : public CPendingPage {                                          \
    TECHSHEET_CLASS(Class, CPendingPage)                                       \
    explicit Class(CDesign& design) : CPendingPage(design, title, settings) {} \
  }
TECHSHEET_PENDING_PAGE(CLineStylesPage, Text::LineStyles, "Settings\\Styles\\Lines");
TECHSHEET_PENDING_PAGE(CHatchStylesPage, Text::HatchStyles, "Settings\\Styles\\Hatches");
TECHSHEET_PENDING_PAGE(CNetsPage, Text::Nets, "Settings\\Nets");
TECHSHEET_PENDING_PAGE(CNetClassesPage, Text::NetClasses, "Settings\\NetClasses");
TECHSHEET_PENDING_PAGE(CAttributeNamesPage, Text::AttributeNames, "Settings\\AttributeNames");
TECHSHEET_PENDING_PAGE(CSpacingsPage, Text::Spacings, "Settings\\Styles\\Spacings");
TECHSHEET_PENDING_PAGE(CRulesPage, Text::Rules, "Settings\\Rules");
TECHSHEET_PENDING_PAGE(CCompRulesPage, Text::ComponentRules, "Settings\\ComponentRules");
TECHSHEET_PENDING_PAGE(CCompColoursPage, Text::ComponentColours, "Settings\\ComponentColours");
TECHSHEET_PENDING_PAGE(CVariantsPage, Text::Variants, "Settings\\Variants");
TECHSHEET_PENDING_PAGE(CWireLengthsPage, Text::WireLengths, "Settings\\WireLengths");
#undef TECHSHEET_PENDING_PAGE
