// The keyring's item that holds the saved login, as people's keyrings hold it.
#pragma once

#include <string>

namespace window_test {

/// Stores the text as the secret, in place of an earlier one. Returns whether the keyring took it.
bool SaveItem(const std::string& text);

/// Deletes the item if there is one.
void ForgetItem();

/// Whether the keyring holds the item and gives it out.
bool ItemIsSaved();

}  // namespace window_test
