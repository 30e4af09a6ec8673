#pragma once
// Names for assistive technology: every focusable control of a window gets its caption as its
// accessible name and its tool tip as its description, and a result label is read as
// "caption: value". Screens need not name controls by hand: the caption is found the way a
// sighted user finds it (the label that is the control's buddy, or the label just before it).

#include <vector>

class QLabel;
class QWidget;

namespace norvane {

// Names every focusable control below `root` that has no accessible name yet.
void NameControls(QWidget* root);
// Marks a label as a result: it is named by NameResults and is never taken for a caption.
void MarkResult(QLabel* result);
// Names each result label "caption: text" (the caption alone while it is empty).
void NameResults(const std::vector<QLabel*>& results);

}  // namespace norvane
