#include "account/VORAAccountRules.h"

#include "core/VORAUtility.h"

#include <QRegularExpression>

namespace {

QString codeProblem(const QString &code)
{
    if (code.isEmpty())
        return QStringLiteral("请输入验证码");
    if (code.size() != VORAAccountRules::codeLength || !VORAUtility::isNumberOnlyString(code))
        return QStringLiteral("验证码为6位数字");
    return QString();
}

QString newPasswordProblem(const QString &password)
{
    if (password.isEmpty())
        return QStringLiteral("请输入密码");
    if (password.size() < VORAAccountRules::minPasswordLength || password.size() > VORAAccountRules::maxPasswordLength)
        return QStringLiteral("密码长度应为6到32位");
    return QString();
}

} // namespace

QString VORAAccountRules::signInProblem(const QString &userName, const QString &password)
{
    const QString name = userName.trimmed();
    if (name.isEmpty())
        return QStringLiteral("请输入用户名");
    if (password.isEmpty())
        return QStringLiteral("请输入密码");
    const bool looksLikeMobile = name.size() == 11 && name.startsWith(QLatin1Char('1'))
        && VORAUtility::isNumberOnlyString(name);
    if (looksLikeMobile && !VORAUtility::isValidataPhoneNumber(name))
        return QStringLiteral("请输入正确的手机号码");
    if (name.contains(QLatin1Char('@')) && !VORAUtility::isValidataEmail(name))
        return QStringLiteral("请输入正确的邮箱地址");
    return QString();
}

QString VORAAccountRules::mobileProblem(const QString &mobile)
{
    return VORAUtility::isValidataPhoneNumber(mobile) ? QString() : QStringLiteral("请输入正确的手机号码");
}

QString VORAAccountRules::signUpProblem(const QString &mobile, const QString &code, const QString &userName,
                                        const QString &password)
{
    static const QRegularExpression nameRe(QStringLiteral("^[A-Za-z0-9_\\x{4e00}-\\x{9fa5}]{3,20}$"));
    QString problem = mobileProblem(mobile);
    if (problem.isEmpty())
        problem = codeProblem(code);
    if (problem.isEmpty() && userName.isEmpty())
        problem = QStringLiteral("请输入用户名");
    if (problem.isEmpty() && !nameRe.match(userName).hasMatch())
        problem = QStringLiteral("用户名应为3到20个字母、数字、下划线或汉字");
    return problem.isEmpty() ? newPasswordProblem(password) : problem;
}

QString VORAAccountRules::partnerProblem(const QString &partner, const QString &account)
{
    if (partner.isEmpty())
        return QStringLiteral("请选择合作网站");
    return account.trimmed().isEmpty() ? QStringLiteral("请输入合作网站的账号") : QString();
}

QString VORAAccountRules::resetProblem(const QString &mobile, const QString &code, const QString &password)
{
    QString problem = mobileProblem(mobile);
    if (problem.isEmpty())
        problem = codeProblem(code);
    return problem.isEmpty() ? newPasswordProblem(password) : problem;
}
