#include "headless/HeadlessWindows.h"
#include "base/Text.h"
#include "controls/RasterCanvas.h"
#include "headless/Errors.h"
#include "headless/RecordingCanvas.h"
#include <algorithm>
#include <cmath>

namespace headless {

using controls::Aspect;
using controls::Control;
using controls::Form;
using controls::Rect;
using controls::Size;
using controls::WindowState;

namespace {

constexpr Size kScreen{28800, 16200};                                        // 1920 x 1080 pixels
constexpr float kFrameWidth = 240, kFrameHeight = 510, kMenuBarHeight = 300; // twips
constexpr unsigned kRestore = 0xF120, kMove = 0xF010, kSize = 0xF000, kMinimise = 0xF020, kMaximise = 0xF030;

Size frameOf(const Form& form) {
  const bool menuBar = std::any_of(form.menuBar.begin(), form.menuBar.end(),
                                   [](const controls::MenuItem* item) { return item->visible(); });
  return {kFrameWidth, kFrameHeight + (menuBar ? kMenuBarHeight : 0)};
}

} // namespace

// Acts as the window manager: whatever the program or the operator asks for, the model is told what became of
// it.
class HeadlessWindows::FormPeer : public controls::Peer {
 public:
  FormPeer(HeadlessWindows& windows, Form& ofForm)
      : form(ofForm), handle(++windows.lastHandle_), windows_(windows) {
    windows_.peers_.push_back(this);
    systemMenu = {{kRestore, "&Restore"},
                  {kMove, "&Move"},
                  {kSize, "&Size"},
                  {kMinimise, "Mi&nimize"},
                  {kMaximise, "Ma&ximize"},
                  {0, "-"},
                  {static_cast<unsigned>(ports::kSystemClose), "&Close"}};
  }
  ~FormPeer() override {
    std::erase(windows_.peers_, this);
    if (windows_.peers_.empty()) windows_.pump_.detach();
  }

  void sync(Aspect aspect) override {
    if (!realised || telling_ > 20) return; // a window that answers each resize with another one
    if (windows_.watchForm) windows_.watchForm(form, aspect);
    if (aspect == Aspect::Visible && form.visible()) shown_ = true;
    const bool place = aspect == Aspect::Geometry || aspect == Aspect::State || aspect == Aspect::Visible;
    if (place && shown_) tell(form.rect(), form.windowState());
  }

  void tell(Rect normal, WindowState state) {
    const Size frame = frameOf(form);
    normal.width = std::clamp(normal.width, frame.width, kScreen.width * 2);
    normal.height = std::clamp(normal.height, frame.height, kScreen.height * 2);
    Size outer{normal.width, normal.height};
    if (state == WindowState::Maximised) outer = kScreen;
    Size inner{outer.width - frame.width, outer.height - frame.height};
    if (state == WindowState::Minimised) inner = {};
    ++telling_;
    struct Done {
      int& depth;
      ~Done() { --depth; }
    } done{telling_};
    form.userResized(normal, inner, state);
  }

  Form& form;
  const std::intptr_t handle;
  bool realised = true, topmost = false;
  WindowState beforeMinimise = WindowState::Normal;
  std::vector<SystemItem> systemMenu;
  std::function<void(std::uintptr_t)> procedure;

 private:
  HeadlessWindows& windows_;
  bool shown_ = false; // once shown, every change of size is told
  int telling_ = 0;
};

// Tells picture boxes their size in pixels; for every other control it only exists.
class HeadlessWindows::ControlPeer : public controls::Peer {
 public:
  ControlPeer(HeadlessWindows& windows, Control& control)
      : windows_(windows), control_(control), picture_(dynamic_cast<controls::PictureBox*>(&control)),
        dpi_(windows.dpi_) {
    ++windows_.controlPeers_;
    if (!picture_) return;
    measure();
    picture_->canvas().resize(width_, height_, dpi_);
    picture_->canvas().clear(picture_->backColour());
  }
  ~ControlPeer() override { --windows_.controlPeers_; }

  void sync(Aspect aspect) override {
    if (picture_ && aspect == Aspect::Geometry && measure()) picture_->pixelSize(width_, height_, dpi_);
    if (windows_.watch) windows_.watch(control_, aspect);
  }

 private:
  bool measure() {
    const auto pixels = [this](float twips) {
      return std::max(0, static_cast<int>(std::lround(twips * dpi_ / 1440)));
    };
    const int width = pixels(control_.width()), height = pixels(control_.height());
    if (width == width_ && height == height_) return false;
    width_ = width;
    height_ = height;
    return true;
  }
  HeadlessWindows& windows_;
  Control& control_;
  controls::PictureBox* picture_;
  int dpi_, width_ = -1, height_ = -1;
};

HeadlessWindows::~HeadlessWindows() = default;

HeadlessWindows::FormPeer& HeadlessWindows::peerOf(const Form& form) const {
  for (FormPeer* peer : peers_)
    if (&peer->form == &form && peer->realised) return *peer;
  throw Failure("the window " + form.name() + " is not loaded");
}

int HeadlessWindows::realisedForms() const {
  return static_cast<int>(
      std::count_if(peers_.begin(), peers_.end(), [](const FormPeer* p) { return p->realised; }));
}

void HeadlessWindows::attachPeers(const controls::Container& container) {
  for (Control* child : container.children()) {
    child->attachPeer(std::make_unique<ControlPeer>(*this, *child));
    if (const auto* inner = dynamic_cast<const controls::Container*>(child)) attachPeers(*inner);
  }
}

void HeadlessWindows::detachPeers(const controls::Container& container) {
  for (Control* child : container.children()) {
    child->attachPeer(nullptr);
    if (const auto* inner = dynamic_cast<const controls::Container*>(child)) detachPeers(*inner);
  }
}

void HeadlessWindows::realise(Form& form) {
  pump_.attach(form.desktop());
  form.attachPeer(std::make_unique<FormPeer>(*this, form));
  attachPeers(form);
  for (controls::Timer* timer : form.timers()) timer->attachPeer(pump_.peerFor(*timer));
}

void HeadlessWindows::unrealise(Form& form) {
  FormPeer& peer = peerOf(form);
  peer.realised = false; // the peer itself goes with the window's object
  peer.procedure = nullptr;
  for (controls::Timer* timer : form.timers()) timer->attachPeer(nullptr);
  detachPeers(form);
  pump_.expectGraveyard();
}

Size HeadlessWindows::screenSize() { return kScreen; }

Size HeadlessWindows::outerSize(const Form& form, Size inner) {
  const Size frame = frameOf(form);
  return {inner.width + frame.width, inner.height + frame.height};
}

Size HeadlessWindows::textSize(const controls::Font& font, std::string_view text) {
  return {static_cast<float>(text.size()) * font.points * 10, font.points * 25}; // 6 x 15 pixels at 9 points
}

std::unique_ptr<controls::Canvas> HeadlessWindows::makeCanvas() {
  switch (drawing_) {
  case Drawing::Recorded:
    return std::make_unique<RecordingCanvas>();
  case Drawing::Pixels:
    return std::make_unique<controls::RasterCanvas>();
  case Drawing::RecordedAndPixels:
    return std::make_unique<RecordingCanvas>(std::make_unique<controls::RasterCanvas>());
  case Drawing::Nothing:
    break;
  }
  return std::make_unique<NullCanvas>();
}

void HeadlessWindows::runModal(Form& form) {
  modal_.push_back(&form);
  struct Done {
    std::vector<Form*>& open;
    Form* form;
    ~Done() { std::erase(open, form); }
  } done{modal_, &form};
  transcript_.add(Transcript::Kind::Window, "modal window " + form.name());
  while (form.loaded() && form.visible()) {
    pump_.doEvents();
    if (!form.loaded() || !form.visible()) return;
    if (pump_.gestureWaits()) {
      pump_.waitForMessage();
    } else if (!whileModal || !whileModal()) {
      throw Stuck("the modal window " + form.name() + " stays open: no gesture is scripted that closes it");
    }
  }
}

void HeadlessWindows::popupMenu(Form&, controls::MenuItem& item) {
  pump_.doEvents();
  if (popupChoices_.empty()) {
    transcript_.add(Transcript::Kind::Window, "pop-up menu " + item.caption() + " dismissed");
    return;
  }
  const std::string wanted = std::move(popupChoices_.front());
  popupChoices_.pop_front();
  const std::string plain = base::replaceAll(wanted, "&", "");
  for (controls::MenuItem* child : item.children) {
    if (!child->visible() || base::replaceAll(child->caption(), "&", "") != plain) continue;
    transcript_.add(Transcript::Kind::Window, "pop-up menu " + item.caption() + " > " + child->caption());
    child->click();
    return;
  }
  throw Failure("the pop-up menu has no visible item \"" + wanted + "\"");
}

void HeadlessWindows::setTopmost(Form& form, bool topmost) {
  peerOf(form).topmost = topmost;
  transcript_.add(Transcript::Kind::Window, form.name() + (topmost ? " on top" : " not on top"));
}

void HeadlessWindows::insertSystemItem(Form& form, unsigned id, std::string_view text) {
  auto& menu = peerOf(form).systemMenu;
  const auto restore =
      std::find_if(menu.begin(), menu.end(), [](const SystemItem& i) { return i.id == kRestore; });
  menu.insert(restore, SystemItem{id, std::string(text)});
}

void HeadlessWindows::deleteSystemItem(Form& form, unsigned id) {
  auto& menu = peerOf(form).systemMenu;
  const auto found = std::find_if(menu.begin(), menu.end(), [id](const SystemItem& i) { return i.id == id; });
  if (found != menu.end()) menu.erase(found);
}

void HeadlessWindows::checkSystemItem(Form& form, unsigned id, bool checked) {
  for (SystemItem& item : peerOf(form).systemMenu)
    if (item.id == id) item.checked = checked;
}

void HeadlessWindows::hook(Form& form, std::function<void(std::uintptr_t)> procedure) {
  peerOf(form).procedure = std::move(procedure);
}

void HeadlessWindows::unhook(Form& form) { peerOf(form).procedure = nullptr; }
std::intptr_t HeadlessWindows::nativeHandle(Form& form) { return peerOf(form).handle; }
const std::vector<SystemItem>& HeadlessWindows::systemMenu(Form& form) { return peerOf(form).systemMenu; }
bool HeadlessWindows::hooked(Form& form) { return static_cast<bool>(peerOf(form).procedure); }
bool HeadlessWindows::topmost(Form& form) { return peerOf(form).topmost; }

void HeadlessWindows::resize(Form& form, float width, float height) {
  FormPeer& peer = peerOf(form);
  if (!form.visible() || form.windowState() != WindowState::Normal)
    throw Failure("the window " + form.name() + " has no border to drag");
  peer.tell({form.left(), form.top(), width, height}, WindowState::Normal);
}

void HeadlessWindows::moveTo(Form& form, float left, float top) {
  peerOf(form).tell({left, top, form.width(), form.height()}, form.windowState());
}

void HeadlessWindows::minimise(Form& form) {
  FormPeer& peer = peerOf(form);
  if (!form.visible()) throw Failure("the window " + form.name() + " is not shown");
  if (form.windowState() == WindowState::Minimised) return;
  peer.beforeMinimise = form.windowState();
  peer.tell(form.rect(), WindowState::Minimised);
}

void HeadlessWindows::maximise(Form& form) { peerOf(form).tell(form.rect(), WindowState::Maximised); }

void HeadlessWindows::restore(Form& form) {
  FormPeer& peer = peerOf(form);
  const bool minimised = form.windowState() == WindowState::Minimised;
  peer.tell(form.rect(), minimised ? peer.beforeMinimise : WindowState::Normal);
}

void HeadlessWindows::close(Form& form) {
  if (modalForm() && modalForm() != &form)
    throw Failure("the window " + form.name() + " waits for " + modalForm()->name());
  systemMenuChoose(form, static_cast<unsigned>(ports::kSystemClose));
}

void HeadlessWindows::systemMenuChoose(Form& form, unsigned id) {
  FormPeer& peer = peerOf(form);
  const auto& menu = peer.systemMenu;
  const auto found = std::find_if(menu.begin(), menu.end(), [id](const SystemItem& i) { return i.id == id; });
  if (found == menu.end() || found->text == "-")
    throw Failure("the system menu of " + form.name() + " has no item " + std::to_string(id));
  if (const auto procedure = peer.procedure) form.desktop().gesture([&] { procedure(id); });
  if (!form.loaded()) return;
  switch (id) {
  case kRestore:
    restore(form);
    break;
  case kMinimise:
    minimise(form);
    break;
  case kMaximise:
    maximise(form);
    break;
  case static_cast<unsigned>(ports::kSystemClose):
    form.userClose();
    break;
  default:
    break;
  }
}

} // namespace headless
