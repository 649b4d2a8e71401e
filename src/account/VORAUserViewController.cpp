#include "account/VORAUserViewController.h"

#include "account/AccountLogging.h"
#include "account/VORAForgetPasswordViewController.h"
#include "account/VORAHwLoginViewController.h"
#include "account/VORASignInUserView.h"
#include "account/VORASignUpViewController.h"

#include "core/VORAAppGlobalData.h"
#include "core/VORANotificationNames.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"

VORAUserViewController::VORAUserViewController(QObject *parent)
    : QObject(parent)
    , m_signInView(new VORASignInUserView(this))
    , m_signUpView(new VORASignUpViewController(this))
    , m_forgetPasswordView(new VORAForgetPasswordViewController(this))
    , m_hwLoginView(new VORAHwLoginViewController(this))
{
    NotificationCenter::defaultCenter().addObserver(this, QString::fromLatin1(VORANotificationNames::userViewPostInfo),
                                                    [this](const Notification &) { upDateUserBasic(); });
    for (VORAAccountForm *form : {static_cast<VORAAccountForm *>(m_signInView), static_cast<VORAAccountForm *>(m_signUpView),
                                  static_cast<VORAAccountForm *>(m_hwLoginView)})
        connect(form, &VORAAccountForm::signedIn, this, &VORAUserViewController::signInFinished);
    upDateUserBasic();
}

VORAUserViewController::~VORAUserViewController()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

bool VORAUserViewController::isVip() const
{
    return !m_user.vipUser().isEmpty() && m_user.vipUser() != QLatin1String("0");
}

void VORAUserViewController::upDateUserBasic()
{
    m_user = *VORAAppGlobalData::shareAppGlobalData()->user();
    m_nickName = m_user.nickName();
    if (m_user.siteName() == QLatin1String("qq")) {
        const QVariant qqName = UserDefaults::standard()
                                    .dictionaryForKey(QStringLiteral("QQLoginData"))
                                    .value(QStringLiteral("QQLoginnickName"));
        if (qqName.typeId() == QMetaType::QString)
            m_nickName = qqName.toString();
    }
    emit userChanged();
}

void VORAUserViewController::signOut()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    global->user()->logonOut();
    global->saveUser();
    qCInfo(lcAccount) << "signed out";
    NotificationCenter::defaultCenter().post(QString::fromLatin1(VORANotificationNames::userViewPostInfo), this);
}

void VORAUserViewController::signInFinished()
{
    VORAAppGlobalData *global = VORAAppGlobalData::shareAppGlobalData();
    VORAUser *user = global->user();
    const int jumpType = user->userViewJumpType();
    const int topUpType = user->userViewJumpIsTopupType();
    user->setUserViewJumpType(JumpStay);
    user->setUserViewJumpIsTopupType(TopUpNone);
    global->saveUser();
    if (topUpType == TopUpMembership)
        emit topUpRequested(PayMembership);
    else if (topUpType == TopUpCoins)
        emit topUpRequested(PayCoins);
    else if (jumpType == JumpBack)
        emit closeRequested();
}
