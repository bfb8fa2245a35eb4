// The pages of the technology dialog that this version does not have yet: a title, and an empty grid that says so.
#pragma once
#include "technology/techpage.h"

class CPendingPage : public CTechDialogPage {
  TECHSHEET_CLASS(CPendingPage, CTechDialogPage)
  CPendingPage(CDesign& design, CTextId title, const CString& settings) : CTechDialogPage(design, title, settings) {
    constexpr int kWidth = 400;  // pixels
    m_grid.SetColumns({{20080, {}, EAlign::Left, kWidth}});
  }
};

#define TECHSHEET_PENDING_PAGE(Class, title, settings)                         \
  class Class : public CPendingPage {                                          \
    TECHSHEET_CLASS(Class, CPendingPage)                                       \
    explicit Class(CDesign& design) : CPendingPage(design, title, settings) {} \
  }
TECHSHEET_PENDING_PAGE(CLineStylesPage, 20083, "Settings\\Styles\\Lines");
TECHSHEET_PENDING_PAGE(CHatchStylesPage, 20084, "Settings\\Styles\\Hatches");
TECHSHEET_PENDING_PAGE(CNetsPage, 20087, "Settings\\Nets");
TECHSHEET_PENDING_PAGE(CNetClassesPage, 20088, "Settings\\NetClasses");
TECHSHEET_PENDING_PAGE(CAttributeNamesPage, 20089, "Settings\\AttributeNames");
TECHSHEET_PENDING_PAGE(CSpacingsPage, 20090, "Settings\\Styles\\Spacings");
TECHSHEET_PENDING_PAGE(CRulesPage, 20091, "Settings\\Rules");
TECHSHEET_PENDING_PAGE(CCompRulesPage, 20092, "Settings\\ComponentRules");
TECHSHEET_PENDING_PAGE(CCompColoursPage, 20093, "Settings\\ComponentColours");
TECHSHEET_PENDING_PAGE(CVariantsPage, 20094, "Settings\\Variants");
TECHSHEET_PENDING_PAGE(CWireLengthsPage, 20095, "Settings\\WireLengths");
#undef TECHSHEET_PENDING_PAGE
