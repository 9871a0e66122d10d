#include "LoginDialog.h"

#include <cstdio>
#include <cstring>

namespace
{

using namespace QzGui;

enum : DWORD
{
    kNameLabelId = 1,
    kPinLabelId = 2,
    kPasswordLabelId = 3,
    kGreetingId = 4,
    kNameId = 10,
    kPinId = 11,
    kPasswordId = 12,
    kLoginId = 20,
    kCloseId = 21,
};

const DWORD kTextColor = 0xFFFFFFFF;
const int kNameLimit = 16;
const int kPinLimit = 6;
const int kPasswordLimit = 16;

DWORD Clicked(DWORD nId)
{
    return (static_cast<DWORD>(QZ_BN_CLICKED) << 16) | nId;
}

} // namespace

CLoginDialog::CLoginDialog() : CQzDialog(kId, nullptr)
{
    for (CQzEdit* pEdit : {&m_name, &m_pin, &m_password})
        pEdit->PreSetParam(false, 0, kTextColor, false);
    m_name.SetLimitText(kNameLimit);
    m_pin.SetNumberOnly(true);
    m_pin.SetLimitText(kPinLimit);
    m_password.SetPassword(true);
    m_password.SetImeEnable(false);
    m_password.SetNoSpace(true);
    m_password.SetLimitText(kPasswordLimit);
    m_nameLabel.SetWindowText("Name");
    m_pinLabel.SetWindowText("PIN");
    m_passwordLabel.SetWindowText("Password");
    m_greeting.SetWindowText("Type a name, a PIN and a password");
    m_login.SetWindowText("Log in");
    m_close.SetWindowText("Close");
    AddCtrls(kNameLabelId, &m_nameLabel, kPinLabelId, &m_pinLabel, kPasswordLabelId,
             &m_passwordLabel, kGreetingId, &m_greeting, kNameId, &m_name, kPinId, &m_pin,
             kPasswordId, &m_password, kLoginId, &m_login, kCloseId, &m_close);
}

void CLoginDialog::OnInitDialog(uint64_t)
{
    AddMsgHandler(WM_COMMAND, Clicked(kLoginId), &CLoginDialog::OnLogin);
    AddMsgHandler(WM_COMMAND, Clicked(kCloseId), &CLoginDialog::OnClose);
}

void CLoginDialog::OnLogin()
{
    char name[kNameLimit * 2 + 1] = {};
    char pin[kPinLimit + 1] = {};
    char password[kPasswordLimit + 1] = {};
    m_name.GetText(name, kNameLimit * 2);
    m_pin.GetText(pin, kPinLimit);
    m_password.GetText(password, kPasswordLimit);
    char text[128];
    if (!*name || std::strlen(pin) < 4 || !*password)
        std::snprintf(text, sizeof(text), "A name, a PIN of 4 digits or more and a password");
    else
        std::snprintf(text, sizeof(text), "Welcome, %s", name);
    m_greeting.SetWindowText(text);
}

void CLoginDialog::OnClose()
{
    ShowWindow(SW_HIDE);
}
