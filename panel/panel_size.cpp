// panel_size.cpp -- counting the panels a panel's script draws.
#include "panel/panel_size.h"

#include <unordered_map>

#include "panel/panel.h"

namespace {

struct Counter {
  long limit;
  // By panel: how many panels it draws (saturated at limit + 1); -1 while
  // its sons are being counted.
  std::unordered_map<const Panel*, long> counted;

  long add(long a, long b) const { return a + b > limit ? limit + 1 : a + b; }

  long count(Panel* p) {
    auto found = counted.find(p);
    if (found != counted.end()) return found->second < 0 ? limit + 1 : found->second;
    counted[p] = -1;
    long n = 1;
    if (auto* form = dynamic_cast<PanelForm*>(p)) {
      for (PanelList* s = form->sons; s && n <= limit; s = s->next) n = add(n, count(s->panel));
    } else if (auto* popup = dynamic_cast<PanelPopup*>(p)) {
      if (popup->son) n = add(n, count(popup->son));
    }
    counted[p] = n;
    return n;
  }
};

}  // namespace

long drawn_panels(Panel* top, long limit) {
  if (!top) return 0;
  Counter counter{limit, {}};
  return counter.count(top);
}
