// Brings messages to the phone's applications.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/journal.h"
#include "simulator/phone.h"

namespace simulator {

// The names of all threads that take messages.
std::vector<std::string> threadNames();

// The answer to a send: the state's "answers" first, then what the application says; 0 for a message that nothing is
// known about. Called with the phone's mutex held, as the next.
int answerOf(Phone& phone, const JournalEntry& message);

// What the state's "answers" put in the place of what the application would do; nothing without such an entry.
std::optional<int> givenAnswer(const Phone& phone, const JournalEntry& message);

// Has those whom the message went to do what follows from it, once it is in the journal; those whose
// answer is given do nothing.
void react(Phone& phone, const JournalEntry& message);

}  // namespace simulator
