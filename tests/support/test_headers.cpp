// test_headers.cpp: the program that owns the precompiled header of the tests.
int main() { return 0; }
