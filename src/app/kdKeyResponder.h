#pragma once
// Turns the delete keys pressed in a list into the list manager's
// deleteKey(); every other key that reaches it is swallowed. A list's table
// hands it the keys it does not handle itself.
class kdDataSource;

class kdKeyResponder
{
public:
    // The key characters the platform gives the delete keys.
    static constexpr unsigned DeleteCharacter = 127;  // delete (backspace)
    static constexpr unsigned DeleteFunctionKey = 63272;  // forward delete
    static constexpr unsigned DeleteCharFunctionKey = 63294;  // delete character

    void setOwner(kdDataSource *newOwner) { owner = newOwner; }
    kdDataSource *getOwner() const { return owner; }
    // `character` is the first character of the key without modifiers.
    // Answers whether the owner was sent deleteKey().
    bool keyDown(unsigned character);
    void deleteKey() { }

private:
    kdDataSource *owner = nullptr;
};
