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
    {Label::kBaseParametersLater,
     "The program definition windows are not in this version yet. Define the program with "
     "the command line, in this working folder:\n\n  quorva program set name=... language=...\n"
     "  quorva files ...   quorva db2 ...   quorva columns ...\n\nthen come back to Generate "
     "the Program.",
     "Le finestre di definizione del programma non sono ancora in questa versione. Definisci "
     "il programma con la riga di comando, in questa cartella di lavoro:\n\n  quorva program "
     "set name=... language=...\n  quorva files ...   quorva db2 ...   quorva columns ...\n\n"
     "poi torna a Genera il Programma."},
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
    {Label::kCollectionNew, "New", "Nuova"},
    {Label::kCollectionCopy, "Copy as", "Copia come"},
    {Label::kCollectionRename, "Rename as", "Rinomina come"},
    {Label::kCollectionDelete, "Delete", "Cancella"},
    {Label::kCollectionName, "Name:", "Nome:"},
    {Label::kCollectionDescription, "Description:", "Descrizione:"},
    {Label::kCollectionInUse, "in use, slot ", "in uso, posizione "},
    {Label::kCollectionMissing, "missing", "mancante"},
    {Label::kAddRow, "Add row", "Aggiungi riga"},
    {Label::kRemoveRow, "Remove row", "Elimina riga"},
    {Label::kKeyColumn, "Key", "Chiave"},
    {Label::kValueColumn, "Value", "Valore"},
    {Label::kOnColumn, "On", "Attiva"},
    {Label::kFlagColumn, "Flag", "Flag"},
    {Label::kCountColumn, "Count", "Occorrenze"},
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
