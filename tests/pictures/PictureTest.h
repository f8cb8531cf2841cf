#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/pictures/PictureStage.h"

namespace pellar {

// Compares a picture with the one kept under a name. What was drawn is left in the folder of the build, and
// kept as the new reference, without passing, when PELLAR_KEEP_PICTURES is set: somebody has to look at it.
void expectLikePicture(const PanelPicture& picture, const std::string& name);

}  // namespace pellar
