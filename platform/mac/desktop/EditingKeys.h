#pragma once

namespace pellar {

// Makes Command-C, -V, -X, -A and -Z work in text fields, and Command-W on a window with a close button.
// AppKit finds these keys in the main menu alone, which an accessory application never shows but may have.
void installEditingKeys();

}  // namespace pellar
