// A fault that the checks must find; nothing includes or builds this.

int* Leak() {
    int* leak = new int(1);
    return leak;
}
