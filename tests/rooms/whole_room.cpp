// Linked with all of a room: what the room needs and has not below it is missing here.

int main() {
    return 0;
}
