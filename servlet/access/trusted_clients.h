// Which clients may command the phone.
#pragma once

// True when the address matches an item of the trust list for Action URIs: "any" trusts everyone, an empty list nobody;
// "*" in an item stands for one part of an address, and an item may match anywhere in the address. Null is logged and
// not trusted.
bool IsTrustIP(const char* address);

// True when the address is an item of the comma-separated list, blanks aside. Null is logged.
bool IsTrustServerIP(const char* address, const char* list);
