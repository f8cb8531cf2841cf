#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "core/Alive.h"
#include "platform/MainLoop.h"

namespace pellar {

// A panel that can be key, as the owner of the keys sees it.
class KeyPanel {
 public:
  virtual ~KeyPanel() = default;
  // It is key no more: gives back what being key took. Calls nothing of the program.
  virtual void keyEnded() = 0;
  // Tells the program that it stopped being key. May do away with the panel.
  virtual void tellKeyEnded() = 0;
};

// A search field as the owner of the keys sees it.
class KeyField {
 public:
  virtual ~KeyField() = default;
  // What is typed goes into it from now on, and no longer.
  virtual void beginEditing() = 0;
  virtual void endEditing() = 0;
};

// A list as the owner of the keys sees it.
class KeyList {
 public:
  virtual ~KeyList() = default;
  // It got the keys or lost them, and looks different.
  virtual void focusChanged() = 0;
  // A key by its virtual code, while it has the focus; false for one that it has no use for. May do away with
  // the list.
  virtual bool keyDown(std::uint16_t keyCode) = 0;
};

// Who has the keys where the system does not know: one for all panels of a program. Its rules:
//
// - At most one panel is key. Another that becomes key, and a panel that leaves the screen, end that. The
//   program is told inside `resign`, else from the main loop.
// - Each panel may have a first responder, one of its search fields, and keeps it while it is not key. A
//   hidden field is none. The first responder of the key panel is edited; no other field is.
// - A list, of any panel, may have the focus: the keys of the field that is edited are offered to it first.
//   A key that it has no use for ends that and is the field's. It ends too when a field takes the keys, when
//   the key panel's first responder is cleared, when a panel stops being key, and when the list's panel
//   leaves the screen. It is no matter of one panel: the list's own need not be able to become key.
//
// What takes part tells when it ends. Main thread only.
class KeyOwner {
 public:
  explicit KeyOwner(MainLoop& loop) : loop_(loop) {}
  KeyOwner(const KeyOwner&) = delete;
  KeyOwner& operator=(const KeyOwner&) = delete;

  // --- panels
  // The one that is key; null when another program has the keyboard.
  [[nodiscard]] KeyPanel* keyPanel() const { return key_; }
  [[nodiscard]] bool isKey(const KeyPanel& panel) const { return key_ == &panel; }
  void makeKey(KeyPanel& panel);
  // Nothing happens to a panel that is not key.
  void resign(KeyPanel& panel);
  // The keyboard was taken from the key panel, if there is one.
  void loseKey();
  void clearFirstResponder(KeyPanel& panel);
  void panelLeftScreen(KeyPanel& panel);
  void panelEnded(KeyPanel& panel);

  // --- fields
  [[nodiscard]] bool isFirstResponder(const KeyField& field) const;
  // The one that is edited; null when there is none.
  [[nodiscard]] KeyField* editedField() const { return edited_; }
  [[nodiscard]] bool isEdited(const KeyField& field) const { return edited_ == &field; }
  // The field, which is not hidden, becomes the first responder of its panel.
  void focus(KeyField& field, KeyPanel& panel);
  void fieldHidden(KeyField& field) { withdraw(field); }
  void fieldEnded(KeyField& field) { withdraw(field); }

  // --- lists
  [[nodiscard]] bool hasFocus(const KeyList& list) const { return list_ == &list; }
  [[nodiscard]] bool aListHasFocus() const { return list_ != nullptr; }
  void focus(KeyList& list, KeyPanel& panel);
  // The keys are the field's alone again.
  void endListFocus();
  void listEnded(KeyList& list);
  // Offers a key, absent for one that no list has a use for, to the list that has the focus. False when the
  // key is the field's. The list may be gone afterwards.
  bool offerToList(std::optional<std::uint16_t> keyCode);

 private:
  void endKey();
  void edit(KeyField* field);
  void withdraw(KeyField& field);

  MainLoop& loop_;
  KeyPanel* key_ = nullptr;
  std::map<const KeyPanel*, KeyField*> firstResponders_;
  KeyField* edited_ = nullptr;
  KeyList* list_ = nullptr;
  const KeyPanel* listPanel_ = nullptr;  // the one with the list in it
  // What was lost and is not told yet, by panel.
  std::map<const KeyPanel*, int> untold_;
  Alive alive_;
};

}  // namespace pellar
