// Entry point of the per-layer link checks: the layer's library is linked
// whole beside this, so every symbol it needs must come from below.
int main() { return 0; }
