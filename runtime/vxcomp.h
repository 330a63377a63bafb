#pragma once

#include "vexil_export.h"
#include "vxdialogtypes.h"
#include "vxdispatcher.h"
#include "vxpropaccess.h"
#include "vxstringlist.h"
#include "vxtypes.h"

#include <QtCore/QPointer>
#include <QtCore/QVariantList>
#include <QtWidgets/QWidget>

/// The translation component of the form named @p form (an identifier, not a
/// string), looked up at run time; see TvxCustomLang::formComponent().
#define VEXIL_FORM(form) (::TvxCustomLang::formComponent(#form))

#include <functional>
#include <memory>

class TMemIniFile;
class TMessageForm;
class TvxComponentList;
class TvxFormWatch;
class TvxLoadWatcher;

/// The translation component: one text per language for every translatable
/// property of the components of its owner (a form, or any QObject), plus
/// dialog texts, locale settings and the application's own strings.
///
/// A switch of language (SetActLang(), or Language set by name) brings the
/// tables in step with the form (BuildList()) and writes the active
/// language's texts into the components (ChangeLanguage()).
///
/// Every table line is: key, then per language the delimiter and that
/// language's text, then a closing delimiter.
///
/// It is a widget only so that Qt Designer can place it; it never shows
/// itself outside the designer.
class VEXIL_EXPORT TvxCustomLang : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString Version READ Version WRITE SetVersion)
public:
    enum TTranslateType { ttNoChange, ttGetDefault };
    Q_ENUM(TTranslateType)

    enum TVexilOption {
        loUseExtUDStrings = 0x1,     ///< application strings from the dispatcher's first component
        loUseExtCommonStrings = 0x2, ///< dialog texts and locales from the dispatcher's first component
    };
    Q_DECLARE_FLAGS(TVexilOptions, TVexilOption)
    Q_FLAG(TVexilOptions)

    /// Creates the component for @p owner's window (or for @p owner itself
    /// when it is not a widget). Throws EVexilError when that owner already
    /// has a translation component.
    explicit TvxCustomLang(QObject *owner = nullptr);
    explicit TvxCustomLang(QWidget *parent) : TvxCustomLang(static_cast<QObject *>(parent)) {}
    ~TvxCustomLang() override;

    /// The translation component of @p owner, or nullptr.
    static TvxCustomLang *componentOf(const QObject *owner);
    /// The translation component of the live form whose object name is
    /// @p formName (UTF-8). Never nullptr: without such a form or component
    /// it is a shared empty component, whose look-ups give empty texts.
    /// Code outside a form's own unit fetches its strings through this
    /// (written there as VEXIL_FORM(Form1)).
    static TvxCustomLang *formComponent(const char *formName);
    /// Makes @p form the owner of components created inside it, although it
    /// is an instance of one of Qt's own classes embedded in another window:
    /// the top widget of a form open in a form designer.
    static void markDesignedForm(QWidget *form);
    /// The class name under which @p owner's own lines are keyed: its
    /// class, or for a form open in a form designer the form's class as its
    /// form file names it (the top widget's object name).
    static QString formClassName(const QObject *owner);

    /// The form or object whose components this component translates.
    QObject *owner() const { return m_owner; }
    /// The owner's object name.
    QString ownerName() const;
    /// The owner's class name.
    QString ownerClassName() const;
    /// The prefix (without the dot) of this owner's keys in translation
    /// files: its class name, or its object name when the class is one of
    /// Qt's own and so shared by many forms.
    QString filePrefix() const;

    // --- tables -------------------------------------------------------
    TvxStringList *Captions() const { return table(stCaptions); }
    TvxStringList *Hints() const { return table(stHints); }
    TvxStringList *DisplayLabels() const { return table(stDisplayLabels); }
    TvxStringList *Fonts() const { return table(stFonts); }
    TvxStringList *MultiLines() const { return table(stMultiLines); }
    TvxStringList *DlgsCaptions() const { return table(stDlgsCaptions); }
    TvxStringList *Strings() const { return table(stStrings); }
    TvxStringList *OtherStrings() const { return table(stOtherStrings); }
    TvxStringList *Locales() const { return table(stLocales); }
    TvxStringList *Collections() const { return table(stCollections); }
    TvxStringList *CharSets() const { return table(stCharSets); }
    TvxStringList *DoNotTranslate() const { return m_doNotTranslate; }
    TvxStringList *LangNames() const { return m_langNames; }

    /// The table of @p type this class publishes, or nullptr.
    virtual TvxStringList *GetPropListByType(TStringsType type) const;

    /// Copies @p lines into the table of @p type and applies that table
    /// (the dialog table is only copied). Nothing happens for the table itself.
    void SetTable(TStringsType type, const TvxStringList *lines);
    void SetTable(TStringsType type, const QStringList &lines);

    void SetCaptions(const TvxStringList *l) { SetTable(stCaptions, l); }
    void SetHints(const TvxStringList *l) { SetTable(stHints, l); }
    void SetLabels(const TvxStringList *l) { SetTable(stDisplayLabels, l); }
    void SetStrings(const TvxStringList *l) { SetTable(stStrings, l); }
    void SetFonts(const TvxStringList *l) { SetTable(stFonts, l); }
    void SetMultiLines(const TvxStringList *l) { SetTable(stMultiLines, l); }
    void SetDlgsCaptions(const TvxStringList *l) { SetTable(stDlgsCaptions, l); }
    void SetOthers(const TvxStringList *l) { SetTable(stOtherStrings, l); }
    void SetSystem(const TvxStringList *l) { SetTable(stLocales, l); }
    void SetCharSets(const TvxStringList *l) { SetTable(stCharSets, l); }
    void SetCollections(const TvxStringList *l) { SetTable(stCollections, l); }

    // --- languages ----------------------------------------------------
    int ActiveLanguage() const { return m_activeLanguage; }
    /// Switches to language @p value (1 to NumOfLanguages()).
    /// Throws ELanguageError for a number out of range outside loading.
    void SetActLang(int value);
    int NumOfLanguages() const { return m_numLanguages; }
    /// Throws ELanguageError for a value below 1.
    void SetNumLang(int value);
    QString Language() const { return m_language; }
    /// Switches to the language named @p name (any letter case).
    /// Throws ELanguageError when LangNames() lacks it.
    void SetLanguage(const QString &name);
    void SetLangNames(const TvxStringList *names);
    void SetLangNames(const QStringList &names);

    QChar LangDelim() const { return m_langDelim; }
    /// Changes the delimiter, rewriting every table (not while loading).
    void SetLangDelim(QChar delim);
    /// Replaces every @p oldDelim by @p newDelim in every line of every table.
    void ChangeLangDelim(QChar oldDelim, QChar newDelim);

    bool ChangeLocales() const { return m_changeLocales; }
    void SetChangeLocales(bool on) { m_changeLocales = on; }
    TTranslateType TranslateType() const { return m_translateType; }
    void SetTranslateType(TTranslateType type) { m_translateType = type; }
    TVexilOptions Options() const { return m_options; }
    void SetOptions(TVexilOptions options);
    void SetDoNotList(const TvxStringList *list);
    void SetDoNotList(const QStringList &list);

    TVexilDispatcher *LangDispatcher() const { return m_dispatcher; }
    /// Registers with @p dispatcher (a previous dispatcher is not told).
    void SetLangDispatcher(TVexilDispatcher *dispatcher);
    /// The dispatcher's object name, as form files store the link.
    QString langDispatcherName() const;
    /// Links to the dispatcher of that object name: the owner's own, else
    /// any in the application. One not built yet is looked for again when
    /// loading ends. An empty name unlinks.
    void setLangDispatcherName(const QString &name);

    QString Version() const { return m_version; }
    /// Ignores @p value: the version is fixed.
    void SetVersion(const QString &value);

    // --- look-ups -----------------------------------------------------
    /// The active language's text of the line keyed @p id in @p list; with
    /// @p useDefault an empty text falls back to language 1.
    QString GetTextFrom(const TvxStringList *list, const QString &id, bool useDefault) const;
    /// GetTextFrom() on Strings() without default.
    QString GetText(const QString &id) const { return GetTextFrom(Strings(), id, false); }
    /// GetText() for an identifier written as a literal (UTF-8), so that the
    /// calls the expert writes compile with QT_NO_CAST_FROM_ASCII.
    QString GetText(const char *id) const { return GetText(QString::fromUtf8(id)); }
    /// GetTextFrom() on Strings() with default.
    QString GetTextOrDefault(const QString &id) const { return GetTextFrom(Strings(), id, true); }
    QString GetTextbyInt(int id) const { return GetText(QString::number(id)); }
    /// The active language's text of line @p index (from 0) of @p list.
    QString GetTextFromByIndex(const TvxStringList *list, int index, bool useDefault) const;
    /// Language @p lang's text of the line keyed @p key, without fallback.
    QString GetStringValue(const TvxStringList *list, const QString &key, int lang) const;
    /// Rewrites language @p lang's text of the line keyed @p key in place.
    virtual void ReplaceStringValue(TvxStringList *list, const QString &key, const QString &newText, int lang);

    // --- maintenance --------------------------------------------------
    /// Adds (or moves to the end, replacing) the Strings() line of @p id.
    bool AddString(const QString &id, const QStringList &texts);
    /// Deletes the Strings() line of @p id (exact letter case).
    bool DeleteString(const QString &id);

    // --- files ----------------------------------------------------------
    // A translation file holds the tables of many forms: every key starts
    // with the owner's class name (its object name when the class is one of
    // Qt's own). Saving rewrites only this owner's keys.

    /// Saves the table of @p type with @p fileDelim between the texts.
    /// Returns the number of table lines, or -1 when the class has no such
    /// table or @p fileDelim equals LangDelim() or a character the format
    /// reserves (the file is not touched). Throws EVexilError when a key or
    /// text could not be read back as it is, or when the file cannot be
    /// written; the old file then stays.
    virtual int SaveToFile(TStringsType type, const QString &fileName, QChar fileDelim);
    /// Loads this owner's entries of @p type. Returns the number of distinct
    /// keys in the file's section, or -1 (missing file, no such table, a
    /// damaged file).
    virtual int LoadFromFile(TStringsType type, const QString &fileName, bool clear);
    virtual void SaveAllToFile(const QString &fileName, QChar fileDelim);
    virtual void LoadAllFromFile(const QString &fileName, bool clear);
    /// LoadAllFromFile() without applying the language afterwards.
    virtual void LoadAllFromFileDNC(const QString &fileName, bool clear);
    virtual int SaveStringsToFile(const QString &fileName, QChar fileDelim);
    virtual int LoadStringsFromFile(const QString &fileName, bool clear);
    /// Merges the file's entries into the table of @p type: the file wins
    /// every conflict, the table keeps what the file lacks.
    virtual bool MergeFromFile(TStringsType type, const QString &fileName);
    virtual bool MergeAllFromFile(const QString &fileName);
    /// MergeAllFromFile() without applying the language afterwards.
    virtual bool MergeAllFromFileDNC(const QString &fileName);
    /// Whether @p fileName can be read and holds an entry of this owner.
    bool fileHasEntries(const QString &fileName) const;
    /// Set while an all-categories load or merge runs (and left set by a
    /// merge of all categories that failed).
    bool BulkLoading() const { return m_bulkLoading; }

    // --- translated dialogs --------------------------------------------
    // Message and input boxes whose titles and buttons come from
    // DlgsCaptions() in the active language; the English text stands where
    // the table has none.

    /// A new message box, not shown yet; the caller shows and deletes it.
    TMessageForm *CreateMessageDialog(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons) const;
    /// Shows a message box modally and returns the modal result of the button pressed.
    int MessageDlg(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons, int helpCtx = 0) const;
    /// MessageDlg() at screen position @p x, @p y (-1, -1: centred on the owner).
    int MessageDlgPos(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons, int helpCtx, int x, int y) const;
    int MessageDlgPosHelp(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons, int helpCtx, int x, int y,
                          const QString &helpFile) const;
    /// A box with the message and an OK button.
    void ShowMessage(const QString &msg) const;
    /// ShowMessage() of @p format with %1, %2 ... replaced by @p args.
    void ShowMessageFmt(const QString &format, const QVariantList &args) const;
    void ShowMessagePos(const QString &msg, int x, int y) const;
    /// Asks for a text; true when OK was pressed, @p value then holds it.
    bool InputQuery(const QString &caption, const QString &prompt, QString &value) const;
    /// The text entered after OK, else @p def.
    QString InputBox(const QString &caption, const QString &prompt, const QString &def) const;
    /// The active language's dialog text of @p key, or @p english when there is none.
    QString DialogText(const QString &key, const QString &english) const;

    // --- discovery and switching --------------------------------------
    /// Brings the tables in step with the owner's components.
    virtual void BuildList();
    /// Writes the active language's texts into the components.
    virtual void ChangeLanguage();
    /// Moves the lines of vanished components of @p list (category @p type)
    /// to the stale lines a renamed component can take its texts back from.
    void DelOldNames(TvxStringList *list, TStringsType type);
    /// Deletes lines whose property no longer exists.
    void CheckRmdProps();

    /// Ends loading: completes the dialog texts and empties the tables the
    /// dispatcher serves. Runs once; called by itself just before the owner
    /// is first shown, when the event loop first runs, or when application
    /// code first calls the component's API (anything but the Qt-style
    /// setters that form-building code uses).
    virtual void Loaded();
    bool isLoading() const;

    /// Set by the Designer plugin on components it creates.
    bool isDesigning() const { return m_designing; }
    void setDesigning(bool on) { m_designing = on; }

    /// Called with the component at the end of every ChangeLanguage().
    std::function<void(TvxCustomLang *sender)> OnChangeLanguage;

    /// The locale settings saved at construction, in locale-line order.
    QStringList savedLocale() const { return m_savedLocale; }

Q_SIGNALS:
    /// Emitted at the end of every ChangeLanguage(), after OnChangeLanguage.
    void languageChanged();

protected:
    /// Marks the writes of form-building code (uic's setupUi, QUiLoader,
    /// Designer): while one lasts, a component still loading stays loading.
    struct FormWrite
    {
        explicit FormWrite(TvxCustomLang *lang) : m_lang(lang) { ++m_lang->m_formWrites; }
        ~FormWrite() { --m_lang->m_formWrites; }
        FormWrite(const FormWrite &) = delete;
        FormWrite &operator=(const FormWrite &) = delete;
        TvxCustomLang *m_lang;
    };
    /// Called first by every operation application code may call: ends
    /// loading when the call does not come from form-building code.
    void codeCall();
    /// Runs once, at the end of Loaded(): what a variant adds to loading.
    virtual void afterLoaded() {}
    /// Writes what a variant adds to a switch, before listeners are told.
    virtual void applyVariantTexts() {}

    TvxStringList *table(TStringsType type) const
    {
        return type >= 0 && type < StringsTypeCount ? m_tables[type] : nullptr;
    }
    /// The line of @p list whose key is exactly @p key followed by the delimiter.
    int findExactLine(const TvxStringList *list, const QString &key) const;
    /// The line of @p list whose text before the first delimiter equals @p key ignoring case.
    int findKeyLine(const TvxStringList *list, const QString &key) const;
    /// A new line: key, the value as language 1, and empty further languages.
    QString newLine(const QString &key, const QString &value) const;

private:
    friend class TVexilDispatcher;
    int saveToStore(TStringsType type, TMemIniFile &ini, QChar fileDelim);
    int loadFromStore(TStringsType type, const TMemIniFile &ini, bool clear);
    bool mergeFromStore(TStringsType type, const TMemIniFile &ini);
    void loadAll(const QString &fileName, bool clear, bool apply);
    bool mergeAll(const QString &fileName, bool apply);
 // sets the language name without a switch
    struct StaleLines;
    void applyCategory(TStringsType type, const TvxComponentList &components);
    void applyCollections(const TvxComponentList &components);
    void applyFormTexts(QWidget *form);
    QString textForApply(const TvxStringList *list, int index) const;
    QStringView textViewForApply(const QString &line) const;
    void buildFormLines(QWidget *form);
    QList<quint64> buildInputs(const TvxComponentList &components) const;
    const TvxComponentList &components(std::shared_ptr<const TvxComponentList> &hold) const;
    void scanCategory(TStringsType type, const TvxComponentList &components);
    void scanOtherStrings(const TvxComponentList &components);
    void scanCollections(const TvxComponentList &components);
    void updateOrAddLine(TvxStringList *list, TStringsType type, const QString &key,
                         const std::function<QString()> &currentValue);
    void delOldNames(TvxStringList *list, TStringsType type, const TvxComponentList &components);
    void checkRmdProps(const TvxComponentList &components);
    bool isDoNotTranslate(const QString &componentName) const;
    const TvxCustomLang *externalSource(TStringsType type) const;
    void completeDialogTexts();

    QPointer<QObject> m_owner;
    const QObject *m_ownerKey = nullptr; // the owner's entry in the one-per-owner map
    int m_formWrites = 0;
    bool m_loadedDone = false;
    QString m_dispatcherName; // named by a form file, not found yet
    void resolveDispatcherName();
    int m_lastAssigned = -1;
    TvxStringList *m_tables[StringsTypeCount] = {};
    int m_activeLanguage = 1;
    int m_numLanguages = 1;
    bool m_changeLocales = false;
    bool m_designing = false;
    QStringList m_savedLocale;
    QPointer<TVexilDispatcher> m_dispatcher;
    QChar m_langDelim = QLatin1Char('\t');
    TvxStringList *m_doNotTranslate;
    QString m_version;
    QString m_language;
    TvxStringList *m_langNames;
    TTranslateType m_translateType = ttNoChange;
    TVexilOptions m_options;
    TvxLoadWatcher *m_loadWatcher = nullptr;
    TvxFormWatch *m_formWatch = nullptr;
    std::unique_ptr<StaleLines> m_stale;
    // What the tables were last built from; a build that would start from
    // the same has nothing to do.
    QList<quint64> m_builtFrom;
    // Per table, the table version and component digest it was last found
    // clean against: the cleaning pass has nothing to do while both hold.
    QPair<quint64, quint64> m_cleanFor[StringsTypeCount];
    // The components of the owner while one operation walks the form
    // several times (a switch, a load or merge of all tables): the form
    // does not change meanwhile, so one walk serves them all.
    const TvxComponentList *m_sharedComponents = nullptr;
    struct SharedComponentsReset
    {
        void operator()(TvxCustomLang *lang) const { lang->m_sharedComponents = nullptr; }
    };
    using SharedComponents = std::unique_ptr<TvxCustomLang, SharedComponentsReset>;
    SharedComponents shareComponents(const TvxComponentList &components);
    // Per table, whether a language's column holds any text, for the table
    // version it was counted on: a switch skips tables with nothing to write.
    struct ColumnTexts
    {
        quint64 version = ~0ull;
        QChar delim;
        QList<bool> hasText; // index: language number
    };
    mutable ColumnTexts m_columns[StringsTypeCount];
    // Per table, the object and property each line writes, for the table
    // version, component digest, delimiter and do-not-translate list they
    // were resolved against.
    struct Bindings
    {
        QList<quint64> key;
        QList<TvxPropAccess::StringTarget> lines; // no object: the line writes nothing
        // Per language, the texts a switch writes, so that switching back
        // and forth neither scans the lines nor builds strings again.
        QList<QList<QString>> texts;
        TTranslateType textsType = ttNoChange;
    };
    const QList<QString> &textsToApply(TStringsType type, Bindings &b);
    Bindings m_bindings[StringsTypeCount];
    Bindings &bindings(TStringsType type, const TvxComponentList &components);
    bool columnHasText(TStringsType type, int lang) const;
    bool m_bulkLoading = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TvxCustomLang::TVexilOptions)

using TTranslateType = TvxCustomLang::TTranslateType;
using TVexilOption = TvxCustomLang::TVexilOption;
using TVexilOptions = TvxCustomLang::TVexilOptions;
constexpr TTranslateType ttNoChange = TvxCustomLang::ttNoChange;
constexpr TTranslateType ttGetDefault = TvxCustomLang::ttGetDefault;
constexpr TVexilOption loUseExtUDStrings = TvxCustomLang::loUseExtUDStrings;
constexpr TVexilOption loUseExtCommonStrings = TvxCustomLang::loUseExtCommonStrings;

/// The translation component as placed on forms: it publishes the tables
/// and settings so that forms and Qt Designer can store them.
class VEXIL_EXPORT TVexil : public TvxCustomLang
{
    Q_OBJECT
    Q_PROPERTY(QStringList Captions READ captionLines WRITE setCaptions)
    Q_PROPERTY(QStringList Hints READ hintLines WRITE setHints)
    Q_PROPERTY(QStringList DisplayLabels READ displayLabelLines WRITE setDisplayLabels)
    Q_PROPERTY(QStringList Strings READ stringLines WRITE setStrings)
    Q_PROPERTY(QStringList Fonts READ fontLines WRITE setFonts)
    Q_PROPERTY(QStringList MultiLines READ multiLineLines WRITE setMultiLines)
    Q_PROPERTY(QStringList DlgsCaptions READ dlgsCaptionLines WRITE setDlgsCaptions)
    Q_PROPERTY(QStringList OtherStrings READ otherStringLines WRITE setOtherStrings)
    Q_PROPERTY(QStringList Locales READ localeLines WRITE setLocales)
    Q_PROPERTY(QStringList CharSets READ charSetLines WRITE setCharSets)
    Q_PROPERTY(QStringList Collections READ collectionLines WRITE setCollections)
    Q_PROPERTY(int NumOfLanguages READ NumOfLanguages WRITE setNumOfLanguages)
    Q_PROPERTY(int ActiveLanguage READ ActiveLanguage WRITE setActiveLanguage)
    Q_PROPERTY(bool ChangeLocales READ ChangeLocales WRITE setChangeLocales)
    Q_PROPERTY(QString LangDispatcher READ langDispatcherName WRITE setLangDispatcher)
    Q_PROPERTY(QChar LangDelim READ LangDelim WRITE setLangDelim)
    Q_PROPERTY(QStringList DoNotTranslate READ doNotTranslateLines WRITE setDoNotTranslate)
    Q_PROPERTY(QStringList LangNames READ langNameLines WRITE setLangNames)
    Q_PROPERTY(QString Language READ Language WRITE setLanguage)
    Q_PROPERTY(TvxCustomLang::TTranslateType TranslateType READ TranslateType WRITE setTranslateType)
    Q_PROPERTY(TvxCustomLang::TVexilOptions Options READ Options WRITE setOptions)
public:
    explicit TVexil(QObject *owner = nullptr) : TvxCustomLang(owner) {}
    explicit TVexil(QWidget *parent) : TvxCustomLang(parent) {}

    QStringList captionLines() const { return Captions()->lines(); }
    QStringList hintLines() const { return Hints()->lines(); }
    QStringList displayLabelLines() const { return DisplayLabels()->lines(); }
    QStringList stringLines() const { return Strings()->lines(); }
    QStringList fontLines() const { return Fonts()->lines(); }
    QStringList multiLineLines() const { return MultiLines()->lines(); }
    QStringList dlgsCaptionLines() const { return DlgsCaptions()->lines(); }
    QStringList otherStringLines() const { return OtherStrings()->lines(); }
    QStringList localeLines() const { return Locales()->lines(); }
    QStringList charSetLines() const { return CharSets()->lines(); }
    QStringList collectionLines() const { return Collections()->lines(); }
    QStringList doNotTranslateLines() const { return DoNotTranslate()->lines(); }
    QStringList langNameLines() const { return LangNames()->lines(); }

    // The setters form-building code calls (uic's setupUi, QUiLoader and
    // Designer through the properties). They only store while the form is
    // being built; application code calls the capitalised API instead.
    void setCaptions(const QStringList &l) { FormWrite w(this); SetTable(stCaptions, l); }
    void setHints(const QStringList &l) { FormWrite w(this); SetTable(stHints, l); }
    void setDisplayLabels(const QStringList &l) { FormWrite w(this); SetTable(stDisplayLabels, l); }
    void setStrings(const QStringList &l) { FormWrite w(this); SetTable(stStrings, l); }
    void setFonts(const QStringList &l) { FormWrite w(this); SetTable(stFonts, l); }
    void setMultiLines(const QStringList &l) { FormWrite w(this); SetTable(stMultiLines, l); }
    void setDlgsCaptions(const QStringList &l) { FormWrite w(this); SetTable(stDlgsCaptions, l); }
    void setOtherStrings(const QStringList &l) { FormWrite w(this); SetTable(stOtherStrings, l); }
    void setLocales(const QStringList &l) { FormWrite w(this); SetTable(stLocales, l); }
    void setCharSets(const QStringList &l) { FormWrite w(this); SetTable(stCharSets, l); }
    void setCollections(const QStringList &l) { FormWrite w(this); SetTable(stCollections, l); }
    void setNumOfLanguages(int value) { FormWrite w(this); SetNumLang(value); }
    void setActiveLanguage(int value) { FormWrite w(this); SetActLang(value); }
    void setChangeLocales(bool on) { SetChangeLocales(on); }
    void setLangDispatcher(const QString &name) { setLangDispatcherName(name); }
    void setLangDelim(QChar delim) { FormWrite w(this); SetLangDelim(delim); }
    void setDoNotTranslate(const QStringList &l) { FormWrite w(this); SetDoNotList(l); }
    void setLangNames(const QStringList &l) { FormWrite w(this); SetLangNames(l); }
    void setLanguage(const QString &name) { FormWrite w(this); SetLanguage(name); }
    void setTranslateType(TTranslateType type) { SetTranslateType(type); }
    void setOptions(TVexilOptions options) { FormWrite w(this); SetOptions(options); }
};
