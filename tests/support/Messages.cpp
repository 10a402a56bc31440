#include "tests/support/Messages.h"

#include "platform/widgets/Dialogs.h"

std::vector<std::string>& Messages() {
  static std::vector<std::string> messages;
  return messages;
}

void platform::MsgBox(const String& text) { Messages().push_back(text.Utf8()); }
