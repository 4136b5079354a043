// The main window: mode toolbar, lock plot, field centre, status bar and menus. The mode buttons' sequences
// stand in frmLock_modes.cpp, the field centre in frmLock_field.cpp, the menus in frmLock_menus.cpp.
#pragma once
#include "controls/Form.h"
#include "controls/Picture.h"
#include "controls/Simple.h"
#include "controls/Timer.h"
#include "controls/Values.h"
#include <array>

class Program;

class frmLock : public controls::Form {
 public:
  explicit frmLock(Program& program);

  static constexpr int kTimerMs = 10; // interval of Timer1
  // Toolbar buttons, in order.
  enum ModeButton { ButtonOff = 1, ButtonLock, ButtonSweep, ButtonHold, ButtonAuto, ButtonPhase };

  controls::Toolbar Toolbar1;
  controls::PictureBox Picture1{*this, "Picture1"};
  // 0..2: field at the left edge, right edge and centre; 3, 4: top and bottom of the vertical scale.
  std::array<controls::Label, 5> Label2{{{Picture1, "Label2", 0},
                                         {Picture1, "Label2", 1},
                                         {Picture1, "Label2", 2},
                                         {Picture1, "Label2", 3},
                                         {Picture1, "Label2", 4}}};
  controls::Label lblPkPwr{Picture1, "lblPkPwr"}, lblSigThreshold{Picture1, "lblSigThreshold"};
  controls::ScrollBar hsCenter{*this, "hsCenter", controls::Direction::Horizontal};
  controls::Label lblCenter{*this, "lblCenter"};
  controls::TextBox txtCenter{*this, "txtCenter"};
  controls::Label lblCenterUnit{*this, "lblCenterUnit"};
  controls::StatusBar StatusBar1{*this, "StatusBar1", {"00000 ", "00000 ", "00000 ", "OFF"}};
  controls::Timer Timer1{*this, kTimerMs};

  controls::MenuArray mnuMenuBar{*this, "mnuMenuBar"}, mnuFile{*this, "mnuFile"}, mnuEdit{*this, "mnuEdit"},
      mnuPrefs{*this, "mnuPrefs"}, mnuUnits{*this, "mnuUnits"}, mnuControls{*this, "mnuControls"},
      mnuCommands{*this, "mnuCommands"}, mnuHelp{*this, "mnuHelp"},
      mnuPicture1Popup{*this, "mnuPicture1Popup"};

  // Public entry points.
  void Toolbar1_ButtonClick(int button); // the whole mode change. Pumps.
  void pressModeButton(int button);      // presses a button and runs its click, as the operator would. Pumps.
  void hsCenterChange();                 // deferred: sends the field centre
  void ShowAutoReadouts(bool show);      // the three field labels of the plot
  void ShowSweepLabels(bool show) { ShowAutoReadouts(show); }
  void showStatus();                        // LockStatus in the fourth status panel
  void place();                             // the remembered position, or centred when FormLeft is -1
  void typeCentre(const std::string& text); // puts a text into txtCenter and takes it as typed. Pumps.
  void rememberLabelCaptions();             // keeps the design captions of the two peak labels
  void buildInitialDisplay();
  const std::string& peakLevelCaption() const { return peakLevelCaption_; }
  const std::string& peakThresholdCaption() const { return peakThresholdCaption_; }
  void layOut() { Form_Resize(); }

  void Form_Load() override;
  void Form_Resize() override;
  void Form_QueryUnload() override;
  void Form_Unload() override;
  void Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) override;
  void Form_KeyUp(std::int16_t keyCode, std::int16_t shift) override;

 private:
  void design();      // captions, ranges, positions, tab order, tips
  void designMenus(); // the menu tree
  void bindEvents();
  void bindMenus();

  void Picture1_Resize();
  void Picture1_MouseDown(controls::MouseButton button, int shift, float x, float y);
  void Timer1_Timer();
  void Toolbar1_MouseMove(float x);
  void layOutCentreRow();

  // Mode changes. Each is true when the common ending follows. All pump. Their parts that are true or false
  // are false when a newer press came in between.
  struct WereDown;
  struct Changing;
  bool modeOff(const WereDown& were);
  bool modeLock(const WereDown& were);
  bool modeSweep(const WereDown& were);
  bool modeHold(const WereDown& were);
  bool modeAuto(const WereDown& were);
  bool modePhase(const WereDown& were);
  void commonEnding();
  enum class SweepOffset { Add, Remove };
  void shiftTxPower(SweepOffset direction);
  void sendTypedTxPower();
  bool selectFilter(const WereDown& were, std::int16_t choice);
  void sendFilter(std::int16_t choice);
  void sendRxFilter();
  bool sendSampleSettings(const WereDown& were);
  bool SetAutoLockSweep(const WereDown& were);
  void useSolventDefaults();
  void beginAutoProcedures();
  bool recentreScrollBar(const WereDown& were);
  void startTimer();
  void moveScrollBarToField();
  void markDown(int mode, int last = 3);
  std::int32_t noiseOnEntry();
  void beginPlot();
  void beginLockPlot();
  void showImaginary(std::int16_t shown, bool checked);

  // Field centre.
  void hsCenter_Scroll();
  void hsCenter_Change();
  void hsCenter_GotFocus();
  void hsCenter_LostFocus();
  void txtCenter_KeyPress(int& key);
  void txtCenter_LostFocus();
  void mnuPicture1Popup_Click(int index);
  void askNewCentre();

  // Menus.
  void mnuMenuBar_Click();
  void mnuFile_Click(int index);
  void mnuEdit_Click();
  void mnuPrefs_Click(int index);
  void mnuUnits_Click(int index);
  void mnuControls_Click(int index);
  void mnuCommands_Click(int index);
  void mnuHelp_Click();

  Program& program_;
  int changingMode_ = 0;                           // mode changes that are under way, one inside the other
  bool exitFromMenu_ = false, saveOnExit_ = false; // ExitFromMenu, SaveOnExit
  float clickX_ = 0;                               // last mouse-down on the plot, cut to a whole number
  std::int16_t readoutVisible_ = 0, readoutFontSize_ = 0;
  std::string peakLevelCaption_, peakThresholdCaption_;
};
