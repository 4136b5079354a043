#include "win32/Peers.h"

namespace win32 {
namespace {

class StatusPeer final : public ControlPeer {
 public:
  StatusPeer(FormPeer& form, controls::StatusBar& bar) : ControlPeer(form, bar), bar_(bar) {
    create(STATUSCLASSNAMEA, "",
           CCS_NORESIZE | CCS_NOPARENTALIGN | (form.form().style().resizable ? SBARS_SIZEGRIP : 0U));
  }
  void place() override {
    ControlPeer::place();
    std::vector<int> edges;
    int edge = 0;
    for (int i = 0; i < bar_.panels(); ++i) {
      const auto n = static_cast<std::size_t>(i);
      edge += toPixels(n < bar_.panelWidths.size() ? bar_.panelWidths[n] : 1200, dpi());
      edges.push_back(i + 1 < bar_.panels() ? edge : -1);
    }
    SendMessageA(window(), SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect != controls::Aspect::Text) return;
    if (bar_.changedPanel() > 0 && shown_) return pushPanel(bar_.changedPanel());
    for (int i = 1; i <= bar_.panels(); ++i) pushPanel(i);
    shown_ = true;
  }

 private:
  void pushPanel(int panel) {
    SendMessageA(window(), SB_SETTEXTA, static_cast<WPARAM>(panel - 1),
                 reinterpret_cast<LPARAM>(bar_.text(panel).c_str()));
  }
  controls::StatusBar& bar_;
  bool shown_ = false;
};

} // namespace

PeerPtr makeStatusPeer(FormPeer& form, controls::StatusBar& bar) {
  return std::make_unique<StatusPeer>(form, bar);
}

} // namespace win32
