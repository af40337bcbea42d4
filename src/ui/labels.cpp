#include "ui/labels.h"

#include <iterator>

#include "tagfile/messages.h"
#include "ui/qt_text.h"

namespace quorva::gui {
namespace {

struct Pair {
  Label label;
  const char* english;
  const char* italian;
};

// In the order of Label, which the static_assert below keeps honest.
constexpr Pair kLabels[] = {
    {Label::kMainTitle, "Quorva - Mainframe Program Generator",
     "Quorva - Generatore di Programmi Mainframe"},
    {Label::kUserDataButton, "User Data and FTP Settings", "Dati Utente e Impostazioni FTP"},
    {Label::kBaseParametersButton, "Program Base Parameters", "Parametri Base del Programma"},
    {Label::kGenerateButton, "Generate the Program", "Genera il Programma"},
    {Label::kExit, "Exit", "Esci"},
    {Label::kAdvancedHelp, "Advanced HELP !", "HELP Avanzato !"},
    {Label::kLevel, "Your level:", "Il tuo livello:"},
    {Label::kTipTitle, "Tip of the day", "Suggerimento del giorno"},
    {Label::kGo, "GO !!!!", "VAI !!!!"},
    {Label::kPreviewButton, "Program Preview", "Anteprima Programma"},
    {Label::kTransferButton, "Transfer the Program via FTP !!!",
     "Trasferisci il Programma via FTP !!!"},
    {Label::kExploreWarnings, "Explore WARNINGS:", "Esplora WARNINGS:"},
    {Label::kOpen, "Open", "Apri"},
    {Label::kInformationNote, "Information Note", "Nota Informativa"},
    {Label::kStatus, "Status", "Stato"},
    {Label::kHostGroup,
     "Insert HOST IP, TSO User and Password:", "Inserisci IP dell'HOST, Utente TSO e Password:"},
    {Label::kLibraryGroup, "Insert the TSO Library for Programs Destination:",
     "Inserisci la Libreria TSO di destinazione dei Programmi:"},
    {Label::kFolderGroup, "Insert the Working Folder for Generated Programs and Db2 Informations:",
     "Inserisci la Cartella di lavoro per i Programmi Generati e le Informazioni Db2:"},
    {Label::kNameGroup,
     "Insert Name, Surname, Company(below):", "Inserisci Nome, Cognome, Societa'(sotto):"},
    {Label::kIpAddress, "Host IP:", "IP Host:"},
    {Label::kTsoUser, "TSO User:", "Utente TSO:"},
    {Label::kPassword, "Password:", "Password:"},
    {Label::kName, "Name and Surname:", "Nome e Cognome:"},
    {Label::kCompany, "Company:", "Societa':"},
    {Label::kSaveConfiguration, "SAVE CONFIGURATION", "SALVA CONFIGURAZIONE"},
    {Label::kCancelUpper, "CANCEL", "ANNULLA"},
    {Label::kAdvancedOptions, "Advanced Options", "Opzioni Avanzate"},
    {Label::kBrowse, "Browse...", "Sfoglia..."},
    {Label::kChooseArchive,
     "Choose a new Archive Directory:", "Scegli una nuova Cartella di Archivio:"},
    {Label::kMainOptions, "Main Options", "Opzioni Principali"},
    {Label::kFtpOptions, "FTP Options", "Opzioni FTP"},
    {Label::kDetailDb2, "Detail Db2", "Dettaglio Db2"},
    {Label::kHelpSpaced, "H E L P", "H E L P"},
    {Label::kDescrBreak,
     "Chars number before the carriage return inside the Program Description (from 30 to 90)  :",
     "Numero di caratteri prima dell'a capo nella Descrizione del Programma (da 30 a 90)  :"},
    {Label::kEasytrieveBreak,
     "Chars number before the carriage return inside Easytrieve sources (from 60 to 200)  :",
     "Numero di caratteri prima dell'a capo nei sorgenti Easytrieve (da 60 a 200)  :"},
    {Label::kCobolBreak,
     "Chars number before the carriage return inside COBOL 2 sources (from 60 to 200)  :",
     "Numero di caratteri prima dell'a capo nei sorgenti COBOL 2 (da 60 a 200)  :"},
    {Label::kTips, "Show the Tips and Tricks at start-up", "Mostra i Suggerimenti all'avvio"},
    {Label::kAlternativeTemplate,
     "Specify an Alternative file for the Main Pseudo Source Code (quormem) :",
     "Specifica un file Alternativo per il Sorgente Principale di Pseudo-Codice (quormem) :"},
    {Label::kChooseTemplate, "Choose...", "Scegli..."},
    {Label::kQuormemFilter, "Quormem Files(*quormem*)", "File Quormem(*quormem*)"},
    {Label::kEditQuormem, "Edit Current Quormem", "Modifica il Quormem Corrente"},
    {Label::kDefault, "Default", "Default"},
    {Label::kPasswordAlert,
     "1 - Notify every MONTH that you should update the Password (a Popup message appears) :",
     "1 - Notifica ogni MESE che la Password deve essere aggiornata (appare un messaggio) :"},
    {Label::kSaveDescr, "1 - Save and restore the last description written in the Db2 accesses :",
     "1 - Salva e ripristina l'ultima descrizione scritta negli accessi Db2 :"},
    {Label::kCompression,
     "2 - Compress and Normalize the Cobol Variables; Es: PIC S9999 -> PIC S9(04)",
     "2 - Comprimi e Normalizza le Variabili Cobol; Es: PIC S9999 -> PIC S9(04)"},
    {Label::kOk, "OK", "OK"},
    {Label::kCancel, "Cancel", "Annulla"},
    {Label::kSelectAll, "Select All!!!", "Seleziona Tutto!!!"},
    {Label::kDeselectAll, "Deselect All!!!", "Deseleziona Tutto!!!"},
    {Label::kInvert, "Invert Selection", "Inverti Selezione"},
    {Label::kDynamicList, "Dynamic List", "Lista Dinamica"},
    {Label::kWarningTitle, "Warning !!!", "Attenzione !!!"},
    {Label::kPreviewTitle, "Program Preview", "Anteprima Programma"},
    {Label::kFind, "Find:", "Cerca:"},
    {Label::kOpenInEditor, "Open with the editor", "Apri con l'editor"},
    {Label::kBreakPoint, "Break point: column ", "Punto di rottura: colonna "},
    {Label::kNotFound, "Not found", "Non trovato"},
    {Label::kLines, " lines", " righe"},
    {Label::kTypedPassword,
     "TSO password for this transfer:", "Password TSO per questo trasferimento:"},
    {Label::kInstallTitle, "Quorva", "Quorva"},
    {Label::kTutorial, "Tutorial", "Tutorial"},
    // Base Parameters and File Details
    {Label::kBaseTitle, "Base Parameters Selection", "Selezione Parametri Base"},
    {Label::kMainInformations, "Main Informations", "Informazioni Principali"},
    {Label::kProgramDescription, "Program Description", "Descrizione Programma"},
    {Label::kNameAndType, "Prg. Name and Type", "Nome e Tipo Prg."},
    {Label::kProgramName, "Name :", "Nome :"},
    {Label::kLanguage, "Language :", "Linguaggio :"},
    {Label::kCobol, "COBOL 2", "COBOL 2"},
    {Label::kEasytrieve, "EASYTRIEVE", "EASYTRIEVE"},
    {Label::kBatch, "Batch", "Batch"},
    {Label::kRoutine, "Routine/Module", "Routine/Modulo"},
    {Label::kMatch, "2 Files Match", "Match 2 File"},
    {Label::kComments, "Comments   :", "Commenti   :"},
    {Label::kConstants, "Constants   :", "Costanti   :"},
    {Label::kMainPseudoSource, "Main Pseudo Source Code", "Sorgente Pseudo Codice Principale"},
    {Label::kIoGroup, "I/O Accesses and Report", "Accessi I/O e Report"},
    {Label::kInputFile, "INPUT FILE                 :", "FILE DI INPUT            :"},
    {Label::kOutputFile, "OUTPUT FILE             :", "FILE DI OUTPUT          :"},
    {Label::kReportCount, "REPORT (Easytrieve)  :", "REPORT (Easytrieve)  :"},
    {Label::kDb2Group, "Db2 Accesses", "Accessi Db2"},
    {Label::kSaveDefault, "Save as Default", "Salva come Default"},
    {Label::kNewProgram, "NEW Program", "NUOVO Programma"},
    {Label::kKeyToValue, "Key to Value", "Chiave Valore"},
    {Label::kCustomFlags, "Custom Flags", "Flag Personalizzati"},
    {Label::kCustomCode, "Custom Code", "Codice Personalizzato"},
    {Label::kDetails, "DETAILS", "DETTAGLI"},
    {Label::kQuickHelp, "?", "?"},
    {Label::kInUse, "In use", "In uso"},
    {Label::kCustomCodesInUse, "Custom Code :", "Codice Personalizzato :"},
    {Label::kKey2ValueInUse, "Key to Value :", "Chiave Valore :"},
    {Label::kFlagsInUse, "Custom Flags :", "Flag Personalizzati :"},
    {Label::kTemplateIdentity, "Pseudo Source :", "Pseudo Sorgente :"},
    {Label::kFieldHelp, "Help", "Aiuto"},
    {Label::kFileDetailsTitle, "File Details - Names and Descriptions",
     "Dettaglio File - Nomi e Descrizioni"},
    {Label::kFileName, "FILE NAME", "NOME FILE"},
    {Label::kReportName, "REPORT NAME", "NOME REPORT"},
    {Label::kFileDescription, "FILE DESCRIPTION", "DESCRIZIONE FILE"},
    {Label::kExcel, "EXCEL", "EXCEL"},
};
constexpr bool in_order() {
  for (std::size_t i = 0; i < std::size(kLabels); ++i)
    if (static_cast<std::size_t>(kLabels[i].label) != i) return false;
  return std::size(kLabels) == static_cast<std::size_t>(Label::kCount);
}
static_assert(in_order(), "kLabels must list every Label in its order");

}  // namespace

QString text(Label label) {
  const Pair& pair = kLabels[static_cast<std::size_t>(label)];
  return to_qt(bilingual(pair.english, pair.italian));
}

}  // namespace quorva::gui
