// The NMR controls panel's design values. Twips; 120 twips are 8 pixels at 96 DPI.
#include "ui/panels/frmControls.h"

namespace {
constexpr float kMargin = 120, kText = 210, kBox = 345;
constexpr float kColumn = 960, kBarWidth = 255, kBarHeight = 1920, kBarTop = 600;
} // namespace

void frmControls::design() {
  setCaption("Vantrel Lock - NMR Controls");
  mnuMain.add(0, "&Undo", nullptr);
  mnuMain.add(20, "&Save", nullptr);
  setInnerSize({4800, 5280});

  fraSolvent.setCaption("Solvent");
  fraSolvent.move({kMargin, kMargin, 4560, 1770});
  lblSolvent.setCaption("S&olvent");
  lblSolvent.move({180, 398, 1440, kText});
  cmbSolvents.move({1680, 330, 2700, kBox});
  lblShift.setCaption("S&hift");
  lblShift.move({180, 863, 1440, kText});
  txtSolventPPM.move({1680, 795, 1440, kBox});
  lblPpm.setCaption("ppm");
  lblPpm.move({3210, 863, 600, kText});
  lblFrequency.setCaption("&Frequency (MHz)");
  lblFrequency.move({180, 1328, 1440, kText});
  txtLockFreq.move({1680, 1260, 1440, kBox});
  txtLockFreq.setText("46.042635");
  txtSolventPPM.setAccessibleName("Solvent shift in ppm");
  txtLockFreq.setAccessibleName("Lock frequency in MHz");

  fraHardware.setCaption("Hardware");
  fraHardware.move({kMargin, 2010, 4560, 3150});
  struct Column {
    controls::Label& label;
    const char* caption;
    controls::ScrollBar& bar;
    controls::TextBox& box;
    const char* text;
    const char* name;
  };
  const Column columns[] = {{lblTxPwr, "&Tx Pwr", vsTxPwr, txtTxPwr, "0.0", "Transmitter power, 0 to 63.5"},
                            {lblRxGain, "&Rx Gain", vsRxGain, txtRxGain, "0", "Receiver gain, 0 to 10000"},
                            {lblPhase, "&Phase", vsPhase, txtPhase, "0", "Phase in degrees, -180 to 180"}};
  float left = 180;
  for (const Column& column : columns) {
    column.label.setCaption(column.caption);
    column.label.move({left, 330, kColumn, kText});
    column.bar.move({left + (kColumn - 120 - kBarWidth) / 2, kBarTop, kBarWidth, kBarHeight});
    column.bar.setAccessibleName(column.name);
    column.bar.setTip(column.name);
    column.box.move({left, kBarTop + kBarHeight + 120, kColumn - 120, kBox});
    column.box.setAccessibleName(column.name);
    column.box.setTip(column.name);
    column.box.setText(column.text);
    left += kColumn;
  }
  vsTxPwr.setRange(127, 0, 1, 6);
  vsRxGain.setRange(10000, 0, 10, 100);
  vsPhase.setRange(180, -180, 1, 18);

  lblRxFilter.setCaption("Rx Filter");
  lblRxFilter.move({left + 240, 330, 1200, kText});
  const char* const filters[] = {"S&low", "&Med", "F&ast", ""};
  for (std::size_t i = 0; i < optBW.size(); ++i) {
    optBW[i].setCaption(filters[i]);
    optBW[i].move({left + 240, kBarTop + 360.0F * static_cast<float>(i), 1200, 300});
  }
  optBW[3].setVisible(false);
  Text1.setText("500");
  Text1.move({left + 240, kBarTop + 1440, 900, kBox});
  Text1.setVisible(false);

  int tab = 0;
  for (controls::Control* stop :
       {static_cast<controls::Control*>(&cmbSolvents), static_cast<controls::Control*>(&txtSolventPPM),
        static_cast<controls::Control*>(&txtLockFreq), static_cast<controls::Control*>(&vsTxPwr),
        static_cast<controls::Control*>(&txtTxPwr), static_cast<controls::Control*>(&vsRxGain),
        static_cast<controls::Control*>(&txtRxGain), static_cast<controls::Control*>(&vsPhase),
        static_cast<controls::Control*>(&txtPhase), static_cast<controls::Control*>(&optBW[0]),
        static_cast<controls::Control*>(&optBW[1]), static_cast<controls::Control*>(&optBW[2])})
    stop->setTabIndex(tab++);
}
