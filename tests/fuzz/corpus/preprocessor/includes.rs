void main() {}
#include "a.inc"
  #include "b.inc"  
#include "c.inc"
#include "missing.inc"
int x;
