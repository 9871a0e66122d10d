// The login window of the sample client: a name, a number-only PIN that refuses pastes and a
// password drawn as asterisks, each an edit box bound in turn to the system edit window when
// clicked; "Log in" greets the name typed, "Close" hides the window. The controls window's
// "Login" button shows it.
#pragma once

#include "controls/QzButton.h"
#include "controls/QzStatic.h"
#include "framework/QzDialog.h"
#include "textinput/QzEdit.h"

class CLoginDialog : public QzGui::CQzDialog
{
public:
    static constexpr DWORD kId = 800;

    CLoginDialog();
    // The back is the library's: a device that keeps what it drew repeats it.
    bool HasStockBack() const override { return true; }

    void OnInitDialog(uint64_t nParam) override;

private:
    void OnLogin();
    void OnClose();

    QzGui::CQzStatic m_nameLabel;
    QzGui::CQzStatic m_pinLabel;
    QzGui::CQzStatic m_passwordLabel;
    QzGui::CQzStatic m_greeting;
    QzGui::CQzEdit m_name;
    QzGui::CQzEdit m_pin;
    QzGui::CQzEdit m_password;
    QzGui::CQzButton m_login;
    QzGui::CQzButton m_close;
};
