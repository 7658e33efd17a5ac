// What runs on the phone, as its "/proc" shows it.
#pragma once

#include <string>

namespace simulator {

// Every process of a phone that has just come up has its entry.
void startProcesses();

// Takes the entry of a process away. Numbers below 1 name none.
void endProcess(int process);

}  // namespace simulator
