// A module that loads but lacks the exports of an effect.
extern "C" __attribute__((visibility("default"))) int NotAnEntryPoint();
int NotAnEntryPoint() {
    return 0;
}
