// What every secondary window must be: laid out without overlaps, usable from the keyboard alone, and named
// for a screen reader.
#include "support/Panel.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include <gtest/gtest.h>
#include <set>

namespace {

using controls::Control;
using controls::Rect;
using support::Panel;

class PanelDesign : public testing::Test {
 protected:
  void SetUp() override { p.started(); }
  std::vector<controls::Form*> windows() {
    Program& program = p.program();
    std::vector<controls::Form*> all{&program.frmAmpl.get(), &program.frmSweep.get(),
                                     &program.frmTuning.get(), &program.frmLevel.get(),
                                     &program.frmAbout.get()};
    for (controls::Form* form : all) form->show(); // the window system has its say about the size
    return all;
  }
  template <class Visit>
  void forEachContainer(const controls::Container& in, float width, float height, Visit visit) {
    visit(in, width, height);
    for (const Control* child : in.children())
      if (const auto* inner = dynamic_cast<const controls::Container*>(child))
        forEachContainer(*inner, child->width(), child->height(), visit);
  }
  template <class Visit> void forEachControl(const controls::Form& form, Visit visit) {
    forEachContainer(form, form.innerWidth(), form.innerHeight(),
                     [&](const controls::Container& in, float, float) {
                       for (const Control* child : in.children()) visit(*child);
                     });
  }
  static std::string name(const controls::Form& form, const Control& control) {
    return form.name() + "." + control.name();
  }
  Panel p;
};

TEST_F(PanelDesign, everyControlLiesInsideItsContainer) {
  for (const controls::Form* form : windows())
    forEachContainer(*form, form->innerWidth(), form->innerHeight(),
                     [&](const controls::Container& in, float width, float height) {
                       for (const Control* c : in.children()) {
                         EXPECT_GE(c->left(), 0) << name(*form, *c);
                         EXPECT_GE(c->top(), 0) << name(*form, *c);
                         EXPECT_LE(c->left() + c->width(), width) << name(*form, *c);
                         EXPECT_LE(c->top() + c->height(), height) << name(*form, *c);
                         EXPECT_GT(c->width() * c->height(), 0) << name(*form, *c);
                       }
                     });
}

TEST_F(PanelDesign, noControlCoversItsNeighbour) {
  const auto apart = [](const Rect& a, const Rect& b) {
    return a.left + a.width <= b.left || b.left + b.width <= a.left || a.top + a.height <= b.top ||
           b.top + b.height <= a.top;
  };
  for (const controls::Form* form : windows())
    forEachContainer(*form, 0, 0, [&](const controls::Container& in, float, float) {
      for (const Control* a : in.children())
        for (const Control* b : in.children())
          EXPECT_TRUE(a == b || apart(a->rect(), b->rect())) << name(*form, *a) << " and " << b->name();
    });
}

TEST_F(PanelDesign, noCaptionIsCutOff) {
  const std::set<std::string> wrapped{"lblDescription", "lblDisclaimer"};
  for (const controls::Form* form : windows())
    forEachControl(*form, [&](const Control& c) {
      const auto* label = dynamic_cast<const controls::Label*>(&c);
      if (!label || wrapped.contains(c.name())) return;
      EXPECT_LE(label->textSize().width, c.width()) << name(*form, c);
      EXPECT_LE(label->textSize().height, c.height() + 30) << name(*form, c);
    });
}

TEST_F(PanelDesign, theMetersFigureFitsItsBox) {
  const controls::TextBox& box = p.program().frmLevel->txtLockLevel;
  const auto size = p.platform.windows().textSize(box.font(), "-65536");
  EXPECT_LE(size.width, box.width());
  EXPECT_LE(size.height, box.height());
  EXPECT_GE(box.font().points, 30.0F); // legible across the room
}

TEST_F(PanelDesign, theTabKeyVisitsEveryEntryInReadingOrder) {
  for (const controls::Form* form : windows()) {
    int expected = 0;
    for (const Control* stop : form->tabOrder())
      EXPECT_EQ(stop->tabIndex(), expected++) << name(*form, *stop);
    forEachControl(*form, [&](const Control& c) {
      const std::set<controls::Kind> stops{controls::Kind::TextBox, controls::Kind::ComboBox,
                                           controls::Kind::Button};
      EXPECT_EQ(c.tabIndex() >= 0, stops.contains(c.kind())) << name(*form, c);
    });
  }
}

TEST_F(PanelDesign, aScreenReaderCanNameEveryControl) {
  for (const controls::Form* form : windows())
    forEachControl(*form, [&](const Control& c) {
      if (c.kind() == controls::Kind::Label || c.kind() == controls::Kind::Frame) return;
      EXPECT_FALSE(c.accessibleName().empty()) << name(*form, c);
    });
}

TEST_F(PanelDesign, noAccessKeyIsUsedTwiceInAWindow) {
  for (const controls::Form* form : windows()) {
    std::set<char> used;
    const auto take = [&](const std::string& caption) {
      const auto at = caption.find('&');
      if (at == std::string::npos || at + 1 >= caption.size()) return;
      const char letter = static_cast<char>(std::tolower(static_cast<unsigned char>(caption[at + 1])));
      EXPECT_TRUE(used.insert(letter).second) << form->name() << ": " << caption;
    };
    for (const controls::MenuItem* item : form->menuBar) take(item->caption());
    forEachControl(*form, [&](const Control& c) {
      if (const auto* label = dynamic_cast<const controls::Label*>(&c)) take(label->caption());
      if (const auto* button = dynamic_cast<const controls::Button*>(&c)) take(button->caption());
    });
  }
}

TEST_F(PanelDesign, theCaptions) {
  Program& program = p.program();
  EXPECT_EQ(program.frmAmpl->caption(), "Vantrel Lock - Display Controls");
  EXPECT_EQ(program.frmSweep->caption(), "Vantrel Lock - Sweep Controls");
  EXPECT_EQ(program.frmTuning->caption(), "Vantrel Lock - Control Loop Tuning");
  EXPECT_EQ(program.frmLevel->caption(), "Lock");
  EXPECT_EQ(program.frmTuning->fraPresets.caption(), "Loop Parameters - Pre-Set Selections");
  EXPECT_EQ(program.frmTuning->fraInUse.caption(), "Loop Parameters in Use");
  EXPECT_EQ(program.frmSweep->fraSweep.caption(), "Sweep Control");
  EXPECT_EQ(program.frmAmpl->fraDisplay.caption(), "Display");
  for (controls::Form* form : {static_cast<controls::Form*>(&program.frmAmpl.get()),
                               static_cast<controls::Form*>(&program.frmSweep.get()),
                               static_cast<controls::Form*>(&program.frmTuning.get())}) {
    ASSERT_EQ(form->menuBar.size(), 1U);
    EXPECT_EQ(form->menuBar[0]->caption(), "&Undo");
    EXPECT_EQ(form->menuBar[0]->index(), 0);
  }
}

// Opened and closed again and again, nothing is left behind.
TEST_F(PanelDesign, aHundredRoundsOfEveryWindowLeaveNothing) {
  const int peers = p.platform.windows().livePeers();
  for (int round = 0; round < 100; ++round) {
    for (controls::Form* form : windows()) form->show();
    for (controls::Form* form : windows()) form->userClose();
    p.pass();
  }
  EXPECT_EQ(p.platform.windows().livePeers(), peers);
  EXPECT_EQ(p.program().desktop.loadedForms(), 1);
}

} // namespace
