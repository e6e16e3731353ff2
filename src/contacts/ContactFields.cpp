#include "contacts/ContactFields.h"

#include "contacts/Contact.h"
#include "platform/Localised.h"
#include "platform/Workspace.h"

using namespace Qt::Literals::StringLiterals;

ContactFields::ContactFields(QObject *owner)
    : editorWindow(new Window(owner)),
      name(new TextField(owner)),
      add1(new TextField(owner)),
      add2(new TextField(owner)),
      add3(new TextField(owner)),
      postcode(new TextField(owner)),
      phone(new TextField(owner)),
      mobile(new TextField(owner)),
      fax(new TextField(owner)),
      email(new TextField(owner)),
      type(new PopUp(owner)),
      title(new PopUp(owner)),
      website(new TextField(owner)),
      comments(new TextView(owner))
{
    // The usual forms of address; any other can be typed.
    title->addItems({QString(), platform::localised("Mr"), platform::localised("Mrs"), platform::localised("Ms"),
                     platform::localised("Miss"), platform::localised("Dr"), platform::localised("Prof")});
}

void ContactFields::show()
{
    editorWindow->makeKeyAndOrderFront();
}

void ContactFields::hide()
{
    editorWindow->orderOut();
}

QString ContactFields::postalBlock(const Contact *contact)
{
    QString text = u""_s;
    if (contact) {
        if (!contact->getTitle().isEmpty())
            text += contact->getTitle() + u" "_s;
        text += contact->getName() + u"\r"_s + contact->getAdd1() + u"\r"_s + contact->getAdd2() + u"\r"_s
            + contact->getAdd3() + u"\r"_s + contact->getPostcode() + u"\r"_s;
    }
    return text;
}

void ContactFields::copyContact()
{
    platform::setPasteboardString(postalBlock(currentItem.get()));
}

void ContactFields::sendEmail()
{
    if (currentItem)
        platform::openUrl(u"mailto:"_s + email->stringValue());
}

void ContactFields::fillOwnFields(const Contact &contact)
{
    // A title of the contact's own stays one: it is added to the choices.
    if (title->indexOfItemWithTitle(contact.getTitle()) < 0)
        title->addItem(contact.getTitle());
    title->selectItemWithTitle(contact.getTitle());
    comments->setString(contact.getComments());
    name->setStringValue(contact.getName());
    email->setStringValue(contact.getEmail());
    fax->setStringValue(contact.getFax());
    mobile->setStringValue(contact.getMobile());
    type->selectItemWithTitle(contact.getType());
}

void ContactFields::fillAddress(const Contact &contact)
{
    add1->setStringValue(contact.getAdd1());
    add2->setStringValue(contact.getAdd2());
    add3->setStringValue(contact.getAdd3());
    postcode->setStringValue(contact.getPostcode());
    phone->setStringValue(contact.getPhone());
}
