#include "model/services/userinterface.h"

#include "model/base/catalogue.h"

namespace {
CNoUserInterface theNobody;
CUserInterface* theInstalled = &theNobody;
}  // namespace

CUserInterface& UserInterface() { return *theInstalled; }

CUserInterfaceScope::CUserInterfaceScope(CUserInterface& userInterface) : m_before(theInstalled) {
  theInstalled = &userInterface;
}

CUserInterfaceScope::~CUserInterfaceScope() { theInstalled = m_before; }

EAnswer ShowMessage(CTextId id, CStringArray args, EButtons buttons) {
  CString text = TextOf(id, args);
  return UserInterface().ShowMessage({id, std::move(args), std::move(text), buttons});
}

int CNoUserInterface::DoModal(CDialog&) {
  constexpr int kCancelled = 2;
  return kCancelled;
}
