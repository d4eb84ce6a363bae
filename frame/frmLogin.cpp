#include "frame/frmLogin.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "ui_frmLogin.h"

frmLogin::frmLogin(QWidget *parent)
    : Screen(QStringLiteral("frmLogin"), parent)
    , ui(std::make_unique<Ui::frmLogin>())
{
    ui->setupUi(this);
    connect(ui->cmdok, &QPushButton::clicked, this, &frmLogin::CMDOK_CLICK);
    connect(ui->cmdcancel, &QPushButton::clicked, this, &Screen::Unload);
}

frmLogin::~frmLogin() = default;

void frmLogin::CMDOK_CLICK()
{
    ErrorTail tail(this);
    if (ui->txtPassword->text() == AdminPassword) {
        PasswordPassed = true;
        Unload();
        return;
    }
    MsgBox(this, QStringLiteral("Invalid Password, try again!"), Buttons::Ok, Icon::None, QStringLiteral("Login"));
    ui->txtPassword->setFocus();
    ui->txtPassword->selectAll();
}
