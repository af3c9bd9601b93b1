// A program with the menu program's libraries that prints its version.
#include <iostream>

int main() {
  std::cout << "0\n";
}
