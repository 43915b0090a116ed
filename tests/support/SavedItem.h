// The keyring's item that holds the saved login, as people's keyrings hold it.
#pragma once

#include <string>

namespace window_test {

/// Stores the text as the secret, in place of an earlier one. Returns whether the keyring took it.
bool SaveItem(const std::string& text);

/// Deletes the item if there is one.
void ForgetItem();

/// What the item holds; empty when the keyring has none or does not give it out.
std::string SavedItem();

}  // namespace window_test
