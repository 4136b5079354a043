// What the program may rely on from its controls, whatever shows them. A test program includes this once and
// defines contract::makeBackEnd; the same suite then runs without a window system and on native windows.
#pragma once
#include "controls/Form.h"
#include "controls/Picture.h"
#include "controls/Simple.h"
#include "controls/Timer.h"
#include "controls/Values.h"
#include "ports/Platform.h"
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace contract {

// A window system with its pump.
class BackEnd {
 public:
  virtual ~BackEnd() = default;
  virtual ports::WindowSystem& windows() = 0;
  virtual void use(controls::Desktop&) {} // whose windows the pump serves
  virtual int turn() = 0;                 // everything waiting is delivered; the number of loaded windows
  virtual void wait(int milliseconds) = 0;
  virtual void whenModal(std::function<void()> gesture) = 0; // runs once the next modal window is open
  virtual int nativeWindows() = 0;                           // that exist now
};
std::unique_ptr<BackEnd> makeBackEnd();

using Log = std::vector<std::string>;

struct World;

// A window with one control of every kind; what it hears goes to the log.
class Sample : public controls::Form {
 public:
  explicit Sample(World& world);
  controls::Toolbar toolbar{
      *this, "toolbar", {{"Off", "Off", "All off"}, {"Lock", "Lock", "On"}, {"Hold", "Hold", ""}}};
  controls::TextBox first{*this, "first"}, second{*this, "second"};
  controls::ScrollBar bar{*this, "bar", controls::Direction::Horizontal};
  controls::UpDown upDown{*this, "upDown"};
  controls::Frame frame{*this, "frame"};
  controls::OptionButton slow{frame, "speed", 0}, fast{frame, "speed", 1};
  controls::ComboBox list{*this, "list", controls::ComboStyle::List};
  controls::ComboBox editable{*this, "editable", controls::ComboStyle::Editable};
  controls::Button button{*this, "button"};
  controls::PictureBox picture{*this, "picture"};
  controls::Label label{picture, "label"};
  controls::StatusBar status{*this, "status", {"one", "two"}};
  controls::Timer timer{*this, 10};
  controls::MenuArray menuBar_{*this, "menuBar"}, items{*this, "items"};
  controls::MenuItem* menu = nullptr;

  void Form_Load() override;
  void Form_Resize() override;
  void Form_QueryUnload() override;
  void Form_Unload() override;
  void Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) override;
  void Form_KeyUp(std::int16_t keyCode, std::int16_t shift) override;
  ~Sample() override;
  std::function<void()> onLoad, onResize, onUnload;
  bool logResizes = false, swallowKeys = false;

 private:
  void design();
  void bind();
  World& world_;
};

struct World {
  std::unique_ptr<BackEnd> backEnd = makeBackEnd();
  Log log, reports;
  controls::Desktop desktop{backEnd->windows(), [this](const base::RuntimeError& error) {
                              reports.push_back(std::to_string(error.number) + " " + error.text);
                            }};
  std::function<void()> onLoad; // of the next window
  controls::FormSlot<Sample, World> slot{*this};
  controls::FormSlot<Sample, World> other{*this};

  World() { backEnd->use(desktop); }
  Log taken() { return std::exchange(log, {}); }
  Sample& shown() { // the window, shown and settled
    slot->show();
    backEnd->turn();
    log.clear();
    return *slot.operator->();
  }
};

inline Sample::Sample(World& world) : Form(world.desktop, "Sample", {.resizable = true}), world_(world) {
  design();
  bind();
  onLoad = world.onLoad;
}

inline Sample::~Sample() { world_.log.push_back("destroyed"); }

inline void Sample::design() {
  setCaption("Sample");
  toolbar.move({0, 0, 6000, 600});
  first.move({100, 700, 1200, 300});
  second.move({1400, 700, 1200, 300});
  bar.move({100, 1100, 4000, 300});
  bar.setRange(-100, 100, 1, 10);
  upDown.move({100, 1500, 300, 300});
  upDown.setRange(0, 10, 1);
  frame.move({100, 1900, 3000, 900});
  slow.move({100, 200, 1000, 300});
  fast.move({1200, 200, 1000, 300});
  list.move({100, 2900, 2000, 300});
  editable.move({2200, 2900, 2000, 300});
  button.move({4400, 2900, 1000, 300});
  picture.move({100, 3300, 3000, 1500});
  picture.setScale(-100, 50, 100, -50);
  status.move({0, 5000, 6000, 300});
  menu = &menuBar_.add(0, "&Menu", nullptr);
  items.add(1, "&First", menu, "Ctrl+R");
  items.add(2, "-", menu);
  items.add(5, "&Fifth", menu);
  int tab = 0;
  for (controls::Control* control : std::initializer_list<controls::Control*>{
           &toolbar, &first, &second, &bar, &slow, &fast, &list, &editable, &button, &picture})
    control->setTabIndex(tab++);
  setInnerSize({6000, 5300});
}

inline void Sample::bind() {
  Log& log = world_.log;
  toolbar.ButtonClick = [&log](int n) { log.push_back("ButtonClick " + std::to_string(n)); };
  for (controls::TextBox* box : {&first, &second}) {
    box->Change = [&log, box] { log.push_back(box->name() + " Change"); };
    box->GotFocus = [&log, box] { log.push_back(box->name() + " GotFocus"); };
    box->LostFocus = [&log, box] { log.push_back(box->name() + " LostFocus"); };
    box->KeyPress = [&log, box](int& key) {
      log.push_back(box->name() + " KeyPress " + std::to_string(key));
    };
  }
  bar.Change = [&log, this] { log.push_back("bar Change " + std::to_string(bar.value())); };
  bar.Scroll = [&log, this] { log.push_back("bar Scroll " + std::to_string(bar.value())); };
  upDown.Change = [&log, this] { log.push_back("upDown Change " + std::to_string(upDown.value())); };
  slow.Click = [&log] { log.push_back("slow Click"); };
  fast.Click = [&log] { log.push_back("fast Click"); };
  list.Click = [&log, this] { log.push_back("list Click " + std::to_string(list.listIndex())); };
  list.Change = [&log] { log.push_back("list Change"); };
  editable.Change = [&log, this] { log.push_back("editable Change " + editable.text()); };
  button.Click = [&log] { log.push_back("button Click"); };
  picture.MouseDown = [&log](controls::MouseButton b, int shift, float x, float y) {
    log.push_back("MouseDown " + std::to_string(static_cast<int>(b)) + " " + std::to_string(shift) + " " +
                  std::to_string(static_cast<int>(x)) + " " + std::to_string(static_cast<int>(y)));
  };
  picture.Resize = [&log, this] {
    if (logResizes) log.push_back("picture Resize");
  };
  menuBar_.Click = [&log](int n) { log.push_back("menuBar Click " + std::to_string(n)); };
  items.Click = [&log](int n) { log.push_back("items Click " + std::to_string(n)); };
  timer.Tick = [&log] { log.push_back("Tick"); };
}

inline void Sample::Form_Load() {
  world_.log.push_back("Load");
  if (onLoad) onLoad();
}
inline void Sample::Form_Resize() {
  if (logResizes) world_.log.push_back("Resize " + std::to_string(static_cast<int>(windowState())));
  if (onResize) onResize();
}
inline void Sample::Form_QueryUnload() { world_.log.push_back("QueryUnload"); }
inline void Sample::Form_Unload() {
  world_.log.push_back("Unload");
  if (onUnload) onUnload();
}
inline void Sample::Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) {
  world_.log.push_back("KeyDown " + std::to_string(keyCode) + " " + std::to_string(shift));
  if (swallowKeys) keyCode = 0;
}
inline void Sample::Form_KeyUp(std::int16_t keyCode, std::int16_t) {
  world_.log.push_back("KeyUp " + std::to_string(keyCode));
}

} // namespace contract
