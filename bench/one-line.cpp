#include <iostream>

int main() { std::cout << "one line\n"; }
