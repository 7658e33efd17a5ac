// The phone's applications: whom messages go to, what they answer and what they do.
#pragma once

#include <span>
#include <string_view>

#include "simulator/journal.h"
#include "simulator/phone.h"

namespace simulator {

std::span<const std::string_view> applicationNames();

// The answer to a send: the state's "answers" first, then what a healthy phone says; 0 for a message that nothing is
// known about. Finishes what has to be done before the answer. Called with the phone's mutex held, as the next.
int answerOf(const Phone& phone, const JournalEntry& message);

// What the phone does on a message once it is in the journal.
void react(Phone& phone, const JournalEntry& message);

}  // namespace simulator
