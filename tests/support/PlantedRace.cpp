#include <thread>

/// Two threads write one integer without a lock. Built with the thread sanitizer alone, where the run
/// must report it: a sanitizer that sees nothing here would see nothing anywhere.
int main()
{
    int shared = 0;
    std::thread other([&shared] { ++shared; });
    ++shared;
    other.join();
    return shared == 2 ? 0 : 1;
}
