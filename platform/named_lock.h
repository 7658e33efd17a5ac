// Locks between the phone's processes, by their names.
#pragma once

class ETL_BaseHelper {
 public:
  class chMutex {
   public:
    chMutex() = default;
    ~chMutex() { CloseMutex(); }
    chMutex(const chMutex&) = delete;
    chMutex& operator=(const chMutex&) = delete;

    // Opens the lock of that name (letters, digits, "-" and "_"), making it when nobody did yet. One that is open is
    // closed first. False when the name is none or the lock cannot be opened.
    bool OpenMutex(const char* name);
    // Waits until nobody else, in this process or another, holds the lock and takes it. False when that does not come
    // about within `milliseconds` (-1: without limit, 0: at once), or no lock is open.
    bool Lock(int milliseconds);
    // False when no lock is open.
    bool Unlock();
    // Gives a lock that is held back, too.
    void CloseMutex();

   private:
    int handle_ = -1;
  };
};
