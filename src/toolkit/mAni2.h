// SPDX-License-Identifier: GPL-3.0-or-later
// The looping clips that windows play while they wait, by the ids the windows know them by:
// 101 the MultiSMS log, 102 the web groups, 103 the options, 104 the first start.
#pragma once

class QLabel;

namespace mAni2 {
// Plays the clip in the label, looping, until stopAnimation. An unknown id shows nothing.
void startAnimation(QLabel* control, int resourceId);
void stopAnimation(QLabel* control);
} // namespace mAni2
