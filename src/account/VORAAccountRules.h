#pragma once

#include <QString>

// What the account forms check before they call the site. Each function gives
// the text to show for the first field that is wrong, or "" when the site may
// be asked. The rules are the site's own, so a form never sends what the site
// would refuse for its shape:
//   user name to sign in  not blank; when it looks like a mobile number (eleven
//                         digits starting with 1) it must be one
//                         (isValidataPhoneNumber); when it holds "@" it must be
//                         an email address (isValidataEmail)
//   mobile                isValidataPhoneNumber
//   code                  six digits
//   new user name         3 to 20 letters, digits, "_" or Chinese characters
//   new password          6 to 32 characters
//   partner sign-in       a partner and an account name at it
// isNumberAndLetterString is not asked: as it stands it answers false for
// every real password, and the site takes any 6 to 32 characters.
class VORAAccountRules
{
public:
    VORAAccountRules() = delete;

    static QString signInProblem(const QString &userName, const QString &password);
    static QString mobileProblem(const QString &mobile);
    static QString signUpProblem(const QString &mobile, const QString &code, const QString &userName,
                                 const QString &password);
    static QString partnerProblem(const QString &partner, const QString &account);
    static QString resetProblem(const QString &mobile, const QString &code, const QString &password);

    static constexpr int codeLength = 6;
    static constexpr int minPasswordLength = 6;
    static constexpr int maxPasswordLength = 32;
};
