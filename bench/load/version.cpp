// A program that has the menu program's libraries and prints its version.
#include <iostream>

int main() {
  std::cout << "0\n";
}
