// Named notifications: what other parts of the suite must hear of.
#pragma once
#include <functional>

#include "model/base/object.h"

struct SEvent {
  CString name;
  long arg1 = 0;
  long arg2 = 0;
  const CObject* subject = nullptr;  // the object behind arg1, where there is one
};

class CEvt {
 public:
  using Listener = std::function<void(const SEvent&)>;

  /// Tells all listeners, in the order in which they subscribed; how many heard it. A listener that subscribes or ends
  /// its subscription meanwhile does not disturb the others.
  static int Send(const CString& name, long arg1, long arg2);
  static int Send(const CString& name, const CObject* subject);  // arg1 is its address

  /// Listens until it is destroyed.
  class CSubscription {
   public:
    explicit CSubscription(Listener listener);
    ~CSubscription();
    CSubscription(const CSubscription&) = delete;
    CSubscription& operator=(const CSubscription&) = delete;

   private:
    unsigned m_id;
  };

 private:
  static int Tell(const SEvent& event);
};
