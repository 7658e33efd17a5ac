// How many accounts the stored configuration has, and how their passwords are stored.
#pragma once

unsigned GetMaxAccountNum();

// True when the passwords of accounts are stored encrypted.
bool arePasswordsEncrypted();

// Encrypts or decrypts the stored passwords of the accounts from `first` up to `end` - 1; one that does not fit its
// field stays as it is (logged). Always true.
bool EncrpptPassword(unsigned first, unsigned end, bool encrypt);
