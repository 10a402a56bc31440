#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/widgets/Dialogs.h"

/// Keeps what the code under test says to the user, in place of the message boxes.
class MessagesTest : public testing::Test {
 protected:
  MessagesTest() {
    platform::Dialogs().msgBox = [this](const platform::String& text) { messages.push_back(text.Utf8()); };
  }
  ~MessagesTest() override { platform::Dialogs() = {}; }

  std::vector<std::string> messages;  ///< since the start of the test
};
