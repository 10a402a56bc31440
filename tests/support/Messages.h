#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/widgets/Dialogs.h"

/// Collects the messages to the user instead of showing them.
class MessagesTest : public testing::Test {
 protected:
  MessagesTest() {
    platform::Dialogs().msgBox = [this](const platform::String& text) { messages.push_back(text.Utf8()); };
  }
  ~MessagesTest() override { platform::Dialogs() = {}; }

  std::vector<std::string> messages;  ///< since the start of the test
};
