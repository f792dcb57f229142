#include "convert/Program.h"

int main(int count, char** values) { return convert::ConverterMain(CONVERTER, {values + 1, values + count}); }
