#include "platform/shared/panel/KeyOwner.h"

#include <algorithm>
#include <utility>

namespace pellar {

void KeyOwner::makeKey(KeyPanel& panel) {
  if (isKey(panel)) return;
  loseKey();
  key_ = &panel;
  const auto responder = firstResponders_.find(&panel);
  edit(responder == firstResponders_.end() ? nullptr : responder->second);
}

void KeyOwner::resign(KeyPanel& panel) {
  if (!isKey(panel)) return;
  endKey();
  panel.tellKeyEnded();
}

void KeyOwner::loseKey() {
  KeyPanel* const panel = key_;
  if (panel == nullptr) return;
  endKey();
  ++untold_[panel];
  loop_.post([this, panel, alive = alive_.watch()] {
    if (!alive) return;
    // The panel may be gone, and another one be in its place in memory.
    const auto untold = untold_.find(panel);
    if (untold == untold_.end()) return;
    if (--untold->second == 0) untold_.erase(untold);
    panel->tellKeyEnded();
  });
}

void KeyOwner::endKey() {
  endListFocus();
  edit(nullptr);
  std::exchange(key_, nullptr)->keyEnded();
}

void KeyOwner::clearFirstResponder(KeyPanel& panel) {
  firstResponders_.erase(&panel);
  if (!isKey(panel)) return;
  endListFocus();
  edit(nullptr);
}

void KeyOwner::panelLeftScreen(KeyPanel& panel) {
  if (listPanel_ == &panel) endListFocus();
  if (isKey(panel)) loseKey();
}

void KeyOwner::panelEnded(KeyPanel& panel) {
  if (listPanel_ == &panel) endListFocus();
  if (isKey(panel)) endKey();
  firstResponders_.erase(&panel);
  untold_.erase(&panel);
}

bool KeyOwner::isFirstResponder(const KeyField& field) const {
  return std::ranges::any_of(firstResponders_, [&](const auto& each) { return each.second == &field; });
}

void KeyOwner::focus(KeyField& field, KeyPanel& panel) {
  firstResponders_[&panel] = &field;
  endListFocus();
  if (isKey(panel)) edit(&field);
}

void KeyOwner::edit(KeyField* field) {
  if (field == edited_) return;
  if (KeyField* const before = std::exchange(edited_, field)) before->endEditing();
  if (field != nullptr) field->beginEditing();
}

void KeyOwner::withdraw(KeyField& field) {
  std::erase_if(firstResponders_, [&](const auto& each) { return each.second == &field; });
  if (isEdited(field)) edit(nullptr);
}

void KeyOwner::focus(KeyList& list, KeyPanel& panel) {
  if (hasFocus(list)) return;
  endListFocus();
  list_ = &list;
  listPanel_ = &panel;
  list.focusChanged();
}

void KeyOwner::endListFocus() {
  listPanel_ = nullptr;
  if (KeyList* const list = std::exchange(list_, nullptr)) list->focusChanged();
}

void KeyOwner::listEnded(KeyList& list) {
  if (!hasFocus(list)) return;
  list_ = nullptr;
  listPanel_ = nullptr;
}

bool KeyOwner::offerToList(std::optional<std::uint16_t> keyCode) {
  if (list_ == nullptr || key_ == nullptr) return false;
  if (keyCode && list_->keyDown(*keyCode)) return true;
  endListFocus();
  return false;
}

}  // namespace pellar
