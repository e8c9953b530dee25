#include "cli/kst_main.h"

int main(int argc, char** argv) { return FKstMain(argc, argv); }
