#include "model/services/evt.h"

#include <map>

namespace {
std::map<unsigned, CEvt::Listener>& Listeners() {
  static std::map<unsigned, CEvt::Listener> listeners;
  return listeners;
}
}  // namespace

CEvt::CSubscription::CSubscription(Listener listener) {
  static unsigned last = 0;
  m_id = ++last;
  Listeners().emplace(m_id, std::move(listener));
}

CEvt::CSubscription::~CSubscription() { Listeners().erase(m_id); }

int CEvt::Tell(const SEvent& event) {
  int heard = 0;
  if (Listeners().empty()) return heard;
  unsigned last = 0;
  const unsigned newest = Listeners().rbegin()->first;  // who subscribes meanwhile hears the next event
  for (auto at = Listeners().begin(); at != Listeners().end() && at->first <= newest;
       at = Listeners().upper_bound(last)) {
    last = at->first;
    const Listener listener = at->second;  // it may end its own subscription
    listener(event);
    ++heard;
  }
  return heard;
}

int CEvt::Send(const CString& name, long arg1, long arg2) { return Tell({name, arg1, arg2, nullptr}); }

int CEvt::Send(const CString& name, const CObject* subject) {
  return Tell({name, reinterpret_cast<long>(subject), 0, subject});
}
