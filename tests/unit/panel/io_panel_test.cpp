// io_panel_test.cpp -- the panel tree built by hand: sons linked twice, the
// pop-up's son, and the naming conflicts and operations the base refuses.
// Trees read from descriptions are checked in iop_format_test.cpp.
#include "panel/io_panel.h"

#include <functional>

#include "foundations/errors.h"
#include "panel_fixture.h"

using IOPanelTest = PanelFixture;
using IOPanelDeathTest = PanelFixture;

namespace {

std::string names_of_sons(IOPanel* owner, PanelForm* form) {
  std::string s;
  for (PanelList* l = form->sons; l; l = l->next) s += std::string(owner->text(l->panel->name)) + " ";
  return s;
}

const char LINKED_TWICE[] =
    "  Warning :\nPanelForm::append\n  Warning :\n   node already linked (are you building a dag ?)\n";

}  // namespace

TEST_F(IOPanelTest, SonLinkedTwiceWarnsAndStaysInBothForms) {
  Panel* a = panel->createPanelInput(key("a"), panel->int_key, nullptr);
  auto* first = static_cast<PanelForm*>(panel->createPanelLine(nullptr));
  auto* second = static_cast<PanelForm*>(panel->createPanelCol(nullptr));
  panel->define_top(panel->createPanelLine(new PanelList{first, new PanelList{second, nullptr}}));

  testing::internal::CaptureStderr();
  first->add_son(a);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  const std::function<void()> again[] = {[&] { second->add_son(a); },
                                         [&] { second->append_son(a); }};
  for (const auto& link : again) {
    testing::internal::CaptureStderr();
    link();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), LINKED_TWICE);
  }
  EXPECT_EQ(names_of_sons(panel, first), "a ");
  EXPECT_EQ(names_of_sons(panel, second), "a a ");
}

TEST_F(IOPanelTest, PopupSonIsNotLinked) {
  Panel* n = panel->createPanelOutput(key("n"), panel->int_key, nullptr);
  Panel* popup = panel->createPanelPopup(key("Result"), n);
  EXPECT_EQ(n->linked, 0);
  testing::internal::CaptureStderr();
  panel->define_top(panel->createPanelCol(new PanelList{popup, new PanelList{n, nullptr}}));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

struct Refusal { const char* what; std::function<void(IOPanel*, SymbolTable*)> call; const char* message; };

TEST_F(IOPanelDeathTest, ConflictsAndRefusalsAreFatal) {
  auto in = [](IOPanel* p, SymbolTable* s, const char* n) {
    return p->createPanelInput(s->add("%s", n), p->int_key, nullptr);
  };
  // `message` is the whole of standard error.
  const Refusal table[] = {
      {"renaming a named panel, even to a free name",
       [](IOPanel* p, SymbolTable* s) {
         Panel* box = p->createPanelBox();
         p->give_a_name(s->add("a"), box);
         p->give_a_name(s->add("b"), box);
       },
       "  Error :\nIOPanel: can't give name 'b' (already named by 'a')\n"},
      {"an output under an input's name",
       [&](IOPanel* p, SymbolTable* s) { in(p, s, "x"); p->createPanelOutput(s->add("x"), p->int_key, nullptr); },
       "  Error :\nIOPanel:createPanelOutput : name 'x' already used\n"},
      {"an input declared twice", [&](IOPanel* p, SymbolTable* s) { in(p, s, "x"); in(p, s, "x"); },
       "  Error :\nIOPanel:createPanelInput : name 'x' already used\n"},
      {"a top set without its name",
       [](IOPanel* p, SymbolTable*) { p->top = p->createPanelBox(); p->define_top(p->createPanelBox()); },
       "  Error :\nIOPanel: top panel defined twice\n\n"},
      {"add_son on a box", [](IOPanel* p, SymbolTable*) { p->createPanelBox()->add_son(nullptr); },
       "  Error :\nPanel:add_son() is only vurtual\n"},
      {"append_son on an input", [&](IOPanel* p, SymbolTable* s) { in(p, s, "x")->append_son(nullptr); },
       "  Error :\nPanel:append_son() is only vurtual\n"},
      {"type_ident on a form", [](IOPanel* p, SymbolTable*) { p->createPanelLine(nullptr)->type_ident(); },
       "  Error :\nPanel:type_ident() is only virtual\n"},
      {"to_tk on the base", [](IOPanel* p, SymbolTable*) { p->createPanelBox()->Panel::to_tk(nullptr, "."); },
       "Sorry, Internal Error :\nPanel::to_tk is only virtual\n"},
      {"to_tk_var on the base", [](IOPanel* p, SymbolTable*) { p->createPanelBox()->Panel::to_tk_var(nullptr); },
       "Sorry, Internal Error :\nPanel::to_tk_var is only virtual\n"},
  };
  for (const Refusal& r : table) {
    SCOPED_TRACE(r.what);
    EXPECT_EXIT(r.call(new_panel(), symbols), ::testing::ExitedWithCode(1),
                "^" + literal(r.message) + "$");
  }
}
