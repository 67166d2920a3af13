// A fault that the checks must find, apart from the first sample; nothing includes or builds this.

int* Leak() {
    int* NoLeak = nullptr;
    return NoLeak;
}
