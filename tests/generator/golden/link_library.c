/* Names for the linker. Generated from the catalogue by tools/generate.tcl; changes belong there. */
void qx_lamp_add(void) { __builtin_trap(); }
void qx_lamp_tune(void) { __builtin_trap(); }
