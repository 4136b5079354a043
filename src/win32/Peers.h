// One native peer for each kind of control.
#pragma once
#include "controls/Picture.h"
#include "controls/Simple.h"
#include "controls/Values.h"
#include "win32/FormPeer.h"

namespace win32 {

using PeerPtr = std::unique_ptr<controls::Peer>;
PeerPtr makeLabelPeer(FormPeer& form, controls::Label& label);
PeerPtr makeFramePeer(FormPeer& form, controls::Frame& frame);
PeerPtr makeButtonPeer(FormPeer& form, controls::Button& button);
PeerPtr makeTextPeer(FormPeer& form, controls::TextBox& box);
PeerPtr makeScrollPeer(FormPeer& form, controls::ScrollBar& bar);
PeerPtr makeComboPeer(FormPeer& form, controls::ComboBox& box);
PeerPtr makeOptionPeer(FormPeer& form, controls::OptionButton& button);
PeerPtr makeUpDownPeer(FormPeer& form, controls::UpDown& upDown);
PeerPtr makePicturePeer(FormPeer& form, controls::PictureBox& picture);
PeerPtr makePictureLabelPeer(controls::Label& label); // a label on a picture is drawn by the picture
PeerPtr makeToolbarPeer(FormPeer& form, controls::Toolbar& toolbar);
PeerPtr makeStatusPeer(FormPeer& form, controls::StatusBar& bar);

} // namespace win32
