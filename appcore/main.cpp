#include "appcore/App.h"

int main(int, char** argv) { return _Main(argv); }
